#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <thread>

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
    static std::string AttributeOf(const Path& file, const char* name) {
        std::string value(100, '\0');
        const ssize_t length = getxattr(file.c_str(), name, value.data(), value.size());
        return value.substr(0, static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    }
    static void SetAttribute(const Path& file, const char* name, const std::string& value) {
        ASSERT_EQ(setxattr(file.c_str(), name, value.data(), value.size(), 0), 0) << name;
    }

    const Path File = Folder / "a.ini";
};

TEST_F(ProfileFileTest, LeavesAloneWhatIsNoProfileFile) {
    std::filesystem::create_directory(Folder / "folder");
    ASSERT_EQ(mkfifo((Folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("loop", Folder / "loop");
    Put(Folder / "large", "");
    std::filesystem::resize_file(Folder / "large", kMaxProfileBytes + 1);
    const std::pair<Path, ProfileState> cases[] = {
        {"folder", ProfileState::Unusable},       {"pipe", ProfileState::Unusable},
        {"/dev/zero", ProfileState::Unusable},    {"large", ProfileState::TooLarge},
        {"loop", ProfileState::Untold},           {std::string(300, 'x'), ProfileState::Untold},
        {"missing/a.ini", ProfileState::Missing}, {"large/a.ini", ProfileState::Missing},
    };
    for (const auto& [name, state] : cases) {
        EXPECT_EQ(ReadProfileFile(Folder / name).State, state) << name;
        EXPECT_FALSE(ReplaceProfileFile(Folder / name, "new")) << name;
    }
    EXPECT_FALSE(ReplaceProfileFile(File, std::string(kMaxProfileBytes + 1, 'x'))) << "nobody could read it";
    EXPECT_EQ(CountIn(Folder), 4);
}

TEST_F(ProfileFileTest, KeepsRightsAndLinksAndGivesNobodyMore) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can give files to others";
    ASSERT_EQ(chmod(Folder.c_str(), 0777), 0);
    // As the system keeps lists: for the owner, for a user of one's own, the group, all of these, others.
    const std::uint32_t entries[] = {2,   0x6'0001, ~0U, 0x4'0002, 4711, 0x6'0004,
                                     ~0U, 0x6'0010, ~0U, 0x20,     ~0U};
    const std::string list(reinterpret_cast<const char*>(entries), sizeof entries);
    constexpr const char* kList = "system.posix_acl_access";
    constexpr uid_t kNobody = 65534;
    const struct {
        uid_t Owner, Saver;
        mode_t Before, After;
        bool Listed, StaysListed, Saves;
    } cases[] = {
        {kNobody, 0, 0751, 0751, false, false, true},       {kNobody, 0, 0660, 0660, true, true, true},
        {kNobody, 0, 0444, 0444, false, false, false},  // root may, but nobody was meant to
        {0, kNobody, 0664, 0664, false, false, false},      {0, kNobody, 06666, 0606, false, false, true},
        {kNobody, kNobody, 0606, 0600, false, false, true}, {kNobody, kNobody, 0660, 0600, true, false, true},
    };
    for (const auto& [owner, saver, before, after, listed, staysListed, saves] : cases) {
        Put(File, "old");
        SetAttribute(File, "user.note", "mine");
        ASSERT_EQ(chown(File.c_str(), owner, 4321), 0);
        ASSERT_EQ(chmod(File.c_str(), before), 0);
        if (listed) SetAttribute(File, kList, list);
        // What the folder has for new files is none of this one's.
        SetAttribute(Folder, "system.posix_acl_default", list);
        ASSERT_EQ(seteuid(saver), 0);
        EXPECT_EQ(ReplaceProfileFile(File, "new"), saves);
        ASSERT_EQ(seteuid(0), 0);
        EXPECT_EQ(StatusOf(File).st_mode & 07777, after);
        EXPECT_EQ(AttributeOf(File, kList), staysListed ? list : "");
        EXPECT_EQ(AttributeOf(File, "user.note"), "mine");
        EXPECT_TRUE(saver != 0 || (StatusOf(File).st_uid == owner && StatusOf(File).st_gid == 4321));
        EXPECT_EQ(CountIn(Folder), 1);
        std::filesystem::remove(File);
        ASSERT_EQ(removexattr(Folder.c_str(), "system.posix_acl_default"), 0);
    }
    Put(File, "2");
    const auto inode = StatusOf(File).st_ino;
    std::filesystem::create_symlink("a.ini", Folder / "second");
    std::filesystem::create_symlink("second", Folder / "first");
    EXPECT_TRUE(ReplaceProfileFile(Folder / "first", "2"));
    EXPECT_EQ(StatusOf(File).st_ino, inode) << "it held these bytes already";
    EXPECT_TRUE(ReplaceProfileFile(Folder / "first", "3"));
    EXPECT_EQ(BytesOf(File), "3");
    EXPECT_TRUE(std::filesystem::is_symlink(Folder / "first"));
}

TEST_F(ProfileFileTest, ADiskThatFillsUpCostsNothing) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    Put(File, "old");
    const rlimit small{9999, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_FALSE(ReplaceProfileFile(File, std::string(10'000, 'n')));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(BytesOf(File), "old");
    EXPECT_EQ(CountIn(Folder), 1);
}

TEST_F(ProfileFileTest, TakesAwayOnlyWhatAKilledSaveLeft) {
    Put(Folder / ".orvane-save-0000000000000000ffffffffffff0000", "mine");
    const Path left = Folder / ".orvane-save-000000000000001fffffffffffffffe0";
    Put(left, "left");
    const int other = open(left.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    EXPECT_TRUE(ReplaceProfileFile(File, "1"));
    EXPECT_EQ(BytesOf(left), "left") << "another process is still writing it";
    close(other);
    EXPECT_TRUE(ReplaceProfileFile(File, "2"));
    EXPECT_FALSE(std::filesystem::exists(left));
    EXPECT_EQ(CountIn(Folder), 2);
}

TEST_F(ProfileFileTest, ThoseWhoSaveAtOnceEachSaveAWholeFile) {
    constexpr int kSaves = 300;
    std::atomic<int> saved = 0;
    std::vector<std::thread> savers;
    for (char first : {'a', 'h', 'o'}) {
        savers.emplace_back([&, first] {
            for (int i = 0; i < kSaves; ++i) {
                const char mark = static_cast<char>(first + i % 7);
                if (ReplaceProfileFile(File, std::string(5000, mark))) ++saved;
            }
        });
    }
    for (int i = 0; i < 10 * kSaves; ++i) {
        const std::string bytes = ReadProfileFile(File).Bytes;
        ASSERT_TRUE(bytes.empty() || bytes == std::string(5000, bytes.front()));
    }
    for (std::thread& saver : savers) saver.join();
    EXPECT_EQ(saved, 3 * kSaves);
    EXPECT_EQ(CountIn(Folder), 1);
}

}  // namespace
}  // namespace platform
