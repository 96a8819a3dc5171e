#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <functional>
#include <optional>
#include <set>

#include "platform/places.h"
#include "platform/profile.h"
#include "platform/profile_fixture.h"

namespace platform {
namespace {

class ProfileFileTest : public FolderTest {
 protected:
    ProfileFileTest() { SetPlaces({Folder / "none", Folder / "none", Folder}); }
    ~ProfileFileTest() override { SetPlaces(); }

    static mode_t ModeOf(const Path& file) {
        struct stat status {};
        return ::stat(file.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    Path File = Folder / "a.ini";
};

TEST_F(ProfileFileTest, LeavesAloneWhatIsNoProfileFile) {
    Put(Folder / "b.ini", "old");
    std::filesystem::create_directory(Folder / "folder");
    ASSERT_EQ(mkfifo((Folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("loop", Folder / "loop");
    std::filesystem::create_symlink("/dev/zero", Folder / "zero");
    Put(Folder / "large", "x");
    std::filesystem::resize_file(Folder / "large", kMaxProfileBytes + 1);
    for (const char* name : {"folder", "pipe", "loop", "zero", "large"}) {
        const Path file = Folder / name;
        const auto type = std::filesystem::symlink_status(file).type();
        EXPECT_EQ(ReadProfileFile(file).State, ProfileState::Unusable) << name;
        EXPECT_FALSE(ReplaceProfileFile(file, "new")) << name;
        EXPECT_EQ(std::filesystem::symlink_status(file).type(), type) << name;
    }
    for (const Path& nowhere :
         {Folder / "missing" / "a.ini", Folder / "b.ini" / "a.ini", Folder / "x" / "", Path()}) {
        EXPECT_EQ(ReadProfileFile(nowhere).State, ProfileState::Missing) << nowhere;
        EXPECT_FALSE(ReplaceProfileFile(nowhere, "new")) << nowhere;
    }
    EXPECT_FALSE(ReplaceProfileFile(File, std::string(kMaxProfileBytes + 1, 'x')))
        << "nobody could read it again";
    EXPECT_TRUE(ReplaceProfileFile(File, std::string(kMaxProfileBytes, 'x')));
    EXPECT_EQ(ReadProfileFile(File).Bytes.size(), kMaxProfileBytes);
    EXPECT_EQ(CountIn(Folder), 7);
}

TEST_F(ProfileFileTest, KeepsRightsAndLinks) {
    const mode_t mask = umask(027);
    EXPECT_TRUE(ReplaceProfileFile(File, "1"));
    umask(mask);
    EXPECT_EQ(ModeOf(File), 0640U);
    for (const mode_t mode : {0606U, 0751U, 0200U}) {
        if (mode == 0200U && geteuid() != 0) continue;  // only root could read that
        ASSERT_EQ(chmod(File.c_str(), mode), 0);
        EXPECT_TRUE(ReplaceProfileFile(File, std::to_string(mode)));
        EXPECT_EQ(ModeOf(File), mode);
        EXPECT_EQ(BytesOf(File), std::to_string(mode));
    }
    if (geteuid() == 0) {
        ASSERT_EQ(chown(File.c_str(), 1234, 4321), 0);
        EXPECT_TRUE(ReplaceProfileFile(File, "owned"));
        struct stat status {};
        ASSERT_EQ(::stat(File.c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, 1234U);
        EXPECT_EQ(status.st_gid, 4321U);
    }

    std::filesystem::create_directory(Folder / "sub");
    std::filesystem::create_symlink("../second", Folder / "sub" / "first");
    std::filesystem::create_symlink("target.ini", Folder / "second");
    for (const char* bytes : {"made", "changed"}) {
        EXPECT_TRUE(ReplaceProfileFile(Folder / "sub" / "first", bytes));
        EXPECT_EQ(BytesOf(Folder / "target.ini"), bytes);
        EXPECT_TRUE(std::filesystem::is_symlink(Folder / "sub" / "first"));
        EXPECT_TRUE(std::filesystem::is_symlink(Folder / "second"));
    }
    EXPECT_EQ(CountIn(Folder / "sub"), 1);
}

TEST_F(ProfileFileTest, RefusesFilesThatTheUserMayNotWrite) {
    // Root may do everything, so it does this as somebody else.
    const auto replaces = [this](mode_t folder, mode_t file) {
        EXPECT_EQ(chmod(Folder.c_str(), folder), 0);
        EXPECT_EQ(chmod(File.c_str(), file), 0);
        const bool isRoot = geteuid() == 0;
        EXPECT_TRUE(!isRoot || seteuid(65534) == 0);
        const bool replaced = ReplaceProfileFile(File, "new");
        EXPECT_TRUE(!isRoot || seteuid(0) == 0);
        return replaced;
    };
    Put(File, "old");
    EXPECT_FALSE(replaces(0777, 0444));
    EXPECT_FALSE(replaces(0555, 0666));
    EXPECT_FALSE(geteuid() == 0 && replaces(0777, 0644));
    EXPECT_EQ(chmod(File.c_str(), 0444), 0);
    EXPECT_FALSE(ReplaceProfileFile(File, "new")) << "nor may root, if nobody may";
    EXPECT_EQ(BytesOf(File), "old");
    EXPECT_EQ(CountIn(Folder), 1);
    EXPECT_TRUE(replaces(0777, 0666));
}

TEST_F(ProfileFileTest, DoesNotTouchAFileThatHoldsTheseBytes) {
    Put(File, "same");
    struct stat before {
    }, after{};
    ASSERT_EQ(::stat(File.c_str(), &before), 0);
    EXPECT_TRUE(ReplaceProfileFile(File, "same"));
    ASSERT_EQ(::stat(File.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(ProfileFileTest, MakesFoldersOnlyForTheUsersFolder) {
    SetPlaces({Folder / "home/data/orvane", {}, {}});
    EXPECT_TRUE(ReplaceProfileFile(Folder / "home/data/orvane/d/e/a.ini", "1"));
    EXPECT_EQ(ModeOf(Folder / "home/data/orvane/d"), 0700U);
    for (const char* outside : {"other/a.ini", "home/data/orvane/../../x/a.ini", "home/data/orvane2/a.ini"}) {
        EXPECT_FALSE(ReplaceProfileFile(Folder / outside, "1")) << outside;
    }
    EXPECT_EQ(CountIn(Folder), 1);
    EXPECT_EQ(CountIn(Folder / "home"), 1);
}

TEST_F(ProfileFileTest, ADiskThatFillsUpCostsNothing) {
    Put(File, "old");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    for (const rlim_t limit : {0U, 1U, 4096U, 9999U}) {
        const rlimit small{limit, before.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
        const bool replaced = ReplaceProfileFile(File, std::string(10'000, 'n'));
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
        EXPECT_FALSE(replaced);
        EXPECT_EQ(BytesOf(File), "old");
        EXPECT_EQ(CountIn(Folder), 1);
    }
}

// Runs the function in a process of its own up to its system call of this number, calls it with that process
// stopped, and lets it go on. Gives what the process ended with, or nothing if it made fewer calls.
std::optional<int> StopAtCall(int number, const std::function<bool()>& run,
                              const std::function<void(pid_t)>& meddle) {
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(2);
        raise(SIGSTOP);
        _exit(run() ? 0 : 1);
    }
    int status = 0;
    bool reached = false;
    for (int stops = 0; waitpid(child, &status, 0) == child && WIFSTOPPED(status); ++stops) {
        if (stops == 0) ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL);
        if (stops == 2 * number - 1) {  // each call stops the process twice
            reached = true;
            meddle(child);
        }
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    }
    if (!reached) return {};
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(ProfileFileTest, CutOffAtEveryStepTheFileIsOldOrNew) {
    const auto save = [this] { return ReplaceProfileFile(File, "new"); };
    bool sawOld = false;
    bool sawNew = false;
    for (int call = 1;; ++call) {
        Put(File, "old");
        const auto end = StopAtCall(call, save, [](pid_t child) { kill(child, SIGKILL); });
        if (end == 2) GTEST_SKIP() << "this machine lets no process be traced";
        if (!end) break;
        const std::string bytes = BytesOf(File);
        ASSERT_TRUE(bytes == "old" || bytes == "new") << call << ": " << bytes;
        (bytes == "old" ? sawOld : sawNew) = true;
    }
    EXPECT_TRUE(sawOld && sawNew);
}

#ifdef __x86_64__
TEST_F(ProfileFileTest, AFailureAtAnyStepLeavesTheOldFileAndNoOther) {
    const std::set<long> calls{SYS_open,       SYS_openat, SYS_stat,       SYS_newfstatat,
                               SYS_fstat,      SYS_read,   SYS_readlink,   SYS_write,
                               SYS_fsync,      SYS_rename, SYS_readlinkat, SYS_fchown,
                               SYS_faccessat2, SYS_fchmod, SYS_close,      SYS_getrandom};
    const auto save = [this] { return ReplaceProfileFile(File, "new"); };
    std::set<long> failedWith;
    for (int call = 1;; ++call) {
        std::filesystem::remove_all(Folder);
        Put(File, "old");
        long failed = -1;
        const auto end = StopAtCall(call, save, [&](pid_t child) {
            void* const numberAt = reinterpret_cast<void*>(offsetof(user_regs_struct, orig_rax));
            const long number = ptrace(PTRACE_PEEKUSER, child, numberAt, nullptr);
            if (!calls.contains(number)) return;
            failed = number;
            ptrace(PTRACE_POKEUSER, child, numberAt, -1L);
        });
        if (end == 2) GTEST_SKIP() << "this machine lets no process be traced";
        if (!end) break;
        if (failed < 0) continue;
        EXPECT_EQ(BytesOf(File), *end == 0 ? "new" : "old") << "call " << failed;
        EXPECT_EQ(CountIn(Folder), 1) << "call " << failed;
        if (*end != 0) failedWith.insert(failed);
    }
    for (const long needed : {SYS_write, SYS_fsync, SYS_rename, SYS_fchmod}) {
        EXPECT_TRUE(failedWith.contains(needed)) << needed;
    }
}
#endif

}  // namespace
}  // namespace platform
