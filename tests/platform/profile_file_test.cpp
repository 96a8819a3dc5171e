#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/profile.h"
#include "platform/profile_fixture.h"

namespace platform {
namespace {

class ProfileFileTest : public FolderTest {
 protected:
    static struct stat StatusOf(const Path& file) {
        struct stat status {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
        return status;
    }

    Path File = Folder / "a.ini";
};

TEST_F(ProfileFileTest, LeavesAloneWhatIsNoProfileFile) {
    std::filesystem::create_directory(Folder / "folder");
    ASSERT_EQ(mkfifo((Folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("loop", Folder / "loop");
    std::filesystem::create_symlink("/dev/zero", Folder / "zero");
    Put(Folder / "large", "x");
    std::filesystem::resize_file(Folder / "large", kMaxProfileBytes + 1);
    for (const char* name : {"folder", "pipe", "loop", "zero", "large"}) {
        const auto type = std::filesystem::symlink_status(Folder / name).type();
        EXPECT_EQ(ReadProfileFile(Folder / name).State, ProfileState::Unusable) << name;
        EXPECT_FALSE(ReplaceProfileFile(Folder / name, "new")) << name;
        EXPECT_EQ(std::filesystem::symlink_status(Folder / name).type(), type) << name;
    }
    for (const Path& nowhere :
         {Folder / "missing/a.ini", Folder / "large/a.ini", Folder / "x" / "", Path()}) {
        EXPECT_EQ(ReadProfileFile(nowhere).State, ProfileState::Missing) << nowhere;
        EXPECT_FALSE(ReplaceProfileFile(nowhere, "new")) << nowhere;
    }
    EXPECT_FALSE(ReplaceProfileFile(File, std::string(kMaxProfileBytes + 1, 'x')))
        << "nobody could read it again";
    EXPECT_EQ(CountIn(Folder), 5);
}

TEST_F(ProfileFileTest, KeepsRightsOwnersAndLinks) {
    const mode_t mask = umask(027);
    EXPECT_TRUE(ReplaceProfileFile(File, "1"));
    umask(mask);
    EXPECT_EQ(StatusOf(File).st_mode & 07777, 0640U);
    ASSERT_EQ(chmod(File.c_str(), 0751), 0);
    const bool given = chown(File.c_str(), 1234, 4321) == 0;  // only root gives files away
    EXPECT_TRUE(ReplaceProfileFile(File, "2"));
    const struct stat changed = StatusOf(File);
    EXPECT_EQ(changed.st_mode & 07777, 0751U);
    EXPECT_TRUE(!given || (changed.st_uid == 1234 && changed.st_gid == 4321));
    EXPECT_TRUE(ReplaceProfileFile(File, "2"));
    EXPECT_EQ(StatusOf(File).st_ino, changed.st_ino) << "it held these bytes already";

    std::filesystem::create_directory(Folder / "sub");
    std::filesystem::create_symlink("../second", Folder / "sub/first");
    std::filesystem::create_symlink("target.ini", Folder / "second");
    for (const char* bytes : {"made", "changed"}) {
        EXPECT_TRUE(ReplaceProfileFile(Folder / "sub/first", bytes));
        EXPECT_EQ(BytesOf(Folder / "target.ini"), bytes);
        EXPECT_TRUE(std::filesystem::is_symlink(Folder / "sub/first"));
        EXPECT_TRUE(std::filesystem::is_symlink(Folder / "second"));
    }
}

TEST_F(ProfileFileTest, RefusesFilesThatTheUserMayNotWrite) {
    Put(File, "old");
    const bool isRoot = geteuid() == 0;
    const struct {
        mode_t Folder, File;
        bool AsRoot, Replaces;
    } cases[] = {
        {0777, 0444, false, false},
        {0555, 0666, false, false},
        {0777, 0444, true, false},  // root may, but nobody was meant to
        {0777, 0666, false, true},
    };
    for (const auto& rights : cases) {
        ASSERT_EQ(chmod(Folder.c_str(), rights.Folder), 0);
        ASSERT_EQ(chmod(File.c_str(), rights.File), 0);
        const bool changesUser = isRoot && !rights.AsRoot;
        ASSERT_TRUE(!changesUser || seteuid(65534) == 0);
        EXPECT_EQ(ReplaceProfileFile(File, "new"), rights.Replaces);
        ASSERT_TRUE(!changesUser || seteuid(0) == 0);
        EXPECT_EQ(BytesOf(File), rights.Replaces ? "new" : "old");
        EXPECT_EQ(CountIn(Folder), 1);
    }
}

TEST_F(ProfileFileTest, ADiskThatFillsUpCostsNothing) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    for (const Path& file : {File, Folder / ".orvane-save"}) {
        Put(file, "old");
        for (const rlim_t limit : {0U, 4096U, 9999U}) {
            const rlimit small{limit, before.rlim_max};
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
            EXPECT_FALSE(ReplaceProfileFile(file, std::string(10'000, 'n')));
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
            EXPECT_EQ(BytesOf(file), "old");
            EXPECT_EQ(CountIn(Folder), 1);
        }
        std::filesystem::remove(file);
    }
}

TEST_F(ProfileFileTest, TakesAwayOnlyWhatAKilledSaveLeft) {
    const Path usual = Folder / ".orvane-save";
    Put(usual, "left");
    const int other = open(usual.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    EXPECT_TRUE(ReplaceProfileFile(File, "1"));
    EXPECT_EQ(BytesOf(usual), "left") << "another process is still writing it";
    close(other);
    EXPECT_TRUE(ReplaceProfileFile(File, "2"));
    EXPECT_EQ(CountIn(Folder), 1);

    Put(Folder / "mine", "precious");
    for (const char kind : {'d', 'p', 'l'}) {
        if (kind == 'd') std::filesystem::create_directory(usual);
        if (kind == 'p') mkfifo(usual.c_str(), 0600);
        if (kind == 'l') std::filesystem::create_symlink("mine", usual);
        const auto type = std::filesystem::symlink_status(usual).type();
        Put(File, "old");
        EXPECT_TRUE(ReplaceProfileFile(File, "new"));
        EXPECT_EQ(BytesOf(File), "new");
        EXPECT_EQ(BytesOf(Folder / "mine"), "precious");
        EXPECT_EQ(std::filesystem::symlink_status(usual).type(), type);
        std::filesystem::remove(usual);
        EXPECT_EQ(CountIn(Folder), 2);
    }
}

TEST_F(ProfileFileTest, ProcessesThatSaveAtOnceEachSaveAWholeFile) {
    constexpr int kSaves = 300;
    Put(File, std::string(5000, 'a'));
    pid_t savers[3];
    for (pid_t& saver : savers) {
        saver = fork();
        if (saver != 0) continue;
        int saved = 0;
        for (int i = 0; i < kSaves; ++i) {
            const char mark = static_cast<char>('a' + (&saver - savers) * 8 + i % 8);
            saved += ReplaceProfileFile(File, std::string(5000, mark)) ? 1 : 0;
        }
        _exit(saved == kSaves ? 0 : 1);
    }
    for (const pid_t saver : savers) {
        int status = 0;
        while (waitpid(saver, &status, WNOHANG) == 0) {
            const std::string bytes = ReadProfileFile(File).Bytes;
            ASSERT_TRUE(bytes == std::string(5000, bytes.empty() ? '?' : bytes.front()));
        }
        EXPECT_EQ(status, 0) << "a save failed";
    }
    EXPECT_EQ(CountIn(Folder), 1);
}

}  // namespace
}  // namespace platform
