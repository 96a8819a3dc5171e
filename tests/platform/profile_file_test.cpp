#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

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
    for (const std::string name : {"folder", "pipe", "loop", "zero", "large"}) {
        const auto type = std::filesystem::symlink_status(Folder / name).type();
        EXPECT_EQ(ReadProfileFile(Folder / name).State, name == "loop"    ? ProfileState::Untold
                                                        : name == "large" ? ProfileState::TooLarge
                                                                          : ProfileState::Unusable)
            << name;
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

// A list of rights as the system keeps it: for the owner, a user of one's own, the group, all of these,
// others.
std::string AccessList(std::uint16_t group) {
    struct Entry {
        std::uint16_t Tag, Rights;
        std::uint32_t Id = 0xFFFFFFFF;
    };
    const Entry entries[] = {{0x01, 6}, {0x02, 4, 4711}, {0x04, group}, {0x10, 6}, {0x20, 0}};
    std::string list = {2, 0, 0, 0};
    list.append(reinterpret_cast<const char*>(entries), sizeof entries);
    return list;
}

TEST_F(ProfileFileTest, ASaveGivesNobodyMoreRights) {
    const auto attribute = [](const Path& file, const char* name) {
        std::string value(100, '\0');
        const ssize_t length = getxattr(file.c_str(), name, value.data(), value.size());
        return value.substr(0, static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    };
    const auto set = [](const Path& file, const char* name, const std::string& value) {
        return setxattr(file.c_str(), name, value.data(), value.size(), 0) == 0;
    };
    constexpr const char* kList = "system.posix_acl_access";
    Put(File, "old");
    if (!set(File, "user.note", "mine") || !set(File, kList, AccessList(0))) {
        GTEST_SKIP() << "this file system has no lists of rights";
    }
    EXPECT_TRUE(ReplaceProfileFile(File, "new"));
    EXPECT_EQ(attribute(File, "user.note"), "mine");
    EXPECT_EQ(attribute(File, kList), AccessList(0));

    const Path plain = Folder / "plain.ini";
    Put(plain, "old");
    ASSERT_EQ(chmod(plain.c_str(), 0640), 0);
    ASSERT_TRUE(set(Folder, "system.posix_acl_default", AccessList(6)));
    EXPECT_TRUE(ReplaceProfileFile(plain, "new"));
    EXPECT_EQ(attribute(plain, kList), "") << "the folder's list for new files";
    EXPECT_EQ(StatusOf(plain).st_mode & 07777, 0640U);
    ASSERT_EQ(removexattr(Folder.c_str(), "system.posix_acl_default"), 0);
    if (geteuid() != 0) GTEST_SKIP() << "only root can give files to another's group";

    const struct {
        uid_t Owner;
        mode_t Before, After;
        bool Listed = false;
    } cases[] = {{0, 06666, 0606}, {65534, 0606, 0600}, {65534, 0664, 0600, true}};
    ASSERT_EQ(chmod(Folder.c_str(), 0777), 0);
    for (const auto& [owner, before, after, listed] : cases) {
        Put(plain, "old");
        ASSERT_EQ(chown(plain.c_str(), owner, 4321), 0);
        ASSERT_EQ(chmod(plain.c_str(), before), 0);
        ASSERT_TRUE(!listed || set(plain, kList, AccessList(6)));
        ASSERT_EQ(seteuid(65534), 0);
        EXPECT_TRUE(ReplaceProfileFile(plain, "new"));
        ASSERT_EQ(seteuid(0), 0);
        EXPECT_EQ(StatusOf(plain).st_mode & 07777, after) << before;
        EXPECT_EQ(attribute(plain, kList), "");
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
    Put(File, "old");
    for (const rlim_t limit : {0U, 4096U, 9999U}) {
        const rlimit small{limit, before.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
        EXPECT_FALSE(ReplaceProfileFile(File, std::string(10'000, 'n')));
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
        EXPECT_EQ(BytesOf(File), "old");
        EXPECT_EQ(CountIn(Folder), 1);
    }
}

TEST_F(ProfileFileTest, TakesAwayOnlyWhatAKilledSaveLeft) {
    for (const char* name :
         {".orvane-save", ".orvane-save-1", ".orvane-save-0000000000000000ffffffffffff0000"}) {
        Put(Folder / name, "mine");
    }
    const Path left = Folder / ".orvane-save-000000000000001fffffffffffffffe0";
    Put(left, "left");
    const int other = open(left.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    EXPECT_TRUE(ReplaceProfileFile(File, "1"));
    EXPECT_EQ(BytesOf(left), "left") << "another process is still writing it";
    close(other);
    EXPECT_TRUE(ReplaceProfileFile(File, "2"));
    EXPECT_FALSE(std::filesystem::exists(left));
    EXPECT_EQ(CountIn(Folder), 4);
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
