#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>

#include "platform/profile_fixture.h"

using namespace platform;

TEST_F(ProfileFileTest, LeavesPipesLoopsAndDevicesAlone) {
    ASSERT_EQ(mkfifo((Folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("loop", Folder / "loop");
    ExpectLeftAlone("pipe", ProfileState::Unusable);
    ExpectLeftAlone("loop", ProfileState::Untold);
    ExpectLeftAlone(std::string(300, 'x'), ProfileState::Untold);
    EXPECT_EQ(ReadProfileFile("/dev/zero").State, ProfileState::Unusable);
}

TEST_F(ProfileFileTest, GivesNobodyMoreRights) {
    const auto get = [](const Path& file, const char* name) {
        std::string value(100, '\0');
        const ssize_t length = getxattr(file.c_str(), name, value.data(), value.size());
        return value.substr(0, static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    };
    const auto set = [](const Path& file, const char* name, const std::string& value) {
        return setxattr(file.c_str(), name, value.data(), value.size(), 0) == 0;
    };
    if (geteuid() != 0 || !set(Folder, "user.note", "")) GTEST_SKIP() << "only root can give files to others";
    // As the system keeps lists: for the owner, for a user of one's own, the group, all of these, others.
    const std::uint32_t entries[] = {2,   0x6'0001, ~0U, 0x4'0002, 4711, 0x6'0004,
                                     ~0U, 0x6'0010, ~0U, 0x4'0020, ~0U};
    const std::string list(reinterpret_cast<const char*>(entries), sizeof entries);
    constexpr const char* kList = "system.posix_acl_access";
    constexpr const char* kFolderList = "system.posix_acl_default";
    constexpr uid_t kNobody = 65534;
    const struct {
        uid_t Owner, Saver;
        mode_t Before, After;
        std::string ListBefore, ListAfter;
        bool Saves;
    } cases[] = {
        {kNobody, 0, 0751, 0751, "", "", true},       {kNobody, 0, 0664, 0664, list, list, true},
        {kNobody, 0, 0444, 0444, "", "", false},  // root may, but nobody was meant to
        {0, kNobody, 0664, 0664, "", "", false},      {0, kNobody, 0666, 0606, "", "", true},
        {kNobody, kNobody, 0606, 0600, "", "", true}, {kNobody, kNobody, 0664, 0600, list, "", true},
    };
    ASSERT_EQ(chmod(Folder.c_str(), 0777), 0);
    for (const auto& [owner, saver, before, after, listBefore, listAfter, saves] : cases) {
        Put(File, "old");
        ASSERT_EQ(chown(File.c_str(), owner, 4321), 0);
        ASSERT_EQ(chmod(File.c_str(), before), 0);
        ASSERT_TRUE(set(File, "user.note", "mine") && (listBefore.empty() || set(File, kList, listBefore)));
        ASSERT_TRUE(set(Folder, kFolderList, list)) << "for new files, which this is none of";
        ASSERT_EQ(seteuid(saver), 0);
        EXPECT_EQ(ReplaceProfileFile(File, "new"), saves);
        ASSERT_EQ(seteuid(0), 0);
        struct stat status = {};
        ASSERT_EQ(stat(File.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, after);
        EXPECT_TRUE(saver != 0 || (status.st_uid == owner && status.st_gid == 4321));
        EXPECT_EQ(get(File, kList), listAfter);
        EXPECT_EQ(get(File, "user.note"), "mine");
        ASSERT_EQ(removexattr(Folder.c_str(), kFolderList), 0);
        std::filesystem::remove(File);
    }
}

TEST_F(ProfileFileTest, FollowsLinks) {
    std::filesystem::create_symlink("a.ini", Folder / "second");
    std::filesystem::create_symlink("second", Folder / "first");
    EXPECT_TRUE(ReplaceProfileFile(Folder / "first", "1"));
    EXPECT_TRUE(std::filesystem::is_symlink(Folder / "first"));
    EXPECT_EQ(BytesOf(File), "1");
}
