#include <signal.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>

#include "alignment/question_file.h"
#include "platform/places.h"
#include "platform/profile_fixture.h"

namespace orvane {
namespace {

// What became of a process that was watched at the system calls that can touch a file.
struct WatchedRun {
    bool Watched = false;  // the machine let it be traced
    int Stops = 0;         // at the begin and at the end of every such call
    int Status = 0;        // as waitpid gives it
};

using Meddle = std::function<void(pid_t, const __ptrace_syscall_info&)>;

// Runs the function in a process of its own and meddles with that at the stop of this number.
WatchedRun RunWatched(const std::function<void()>& function, int meddleAt, const Meddle& meddle) {
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(1);
        raise(SIGSTOP);
        function();
        _exit(0);
    }
    // Memory is asked for more often in one run than in the next, so these calls would shift the stops.
    static const std::set<std::uint64_t> memoryCalls{SYS_brk,      SYS_mmap,    SYS_munmap, SYS_mremap,
                                                     SYS_mprotect, SYS_madvise, SYS_futex};
    WatchedRun run;
    bool counts = false;
    while (TEMP_FAILURE_RETRY(waitpid(child, &run.Status, 0)) == child && WIFSTOPPED(run.Status)) {
        if (!run.Watched) {
            const long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
            run.Watched = ptrace(PTRACE_SETOPTIONS, child, nullptr, options) == 0;
            if (!run.Watched) kill(child, SIGKILL);
        } else if (WSTOPSIG(run.Status) == (SIGTRAP | 0x80)) {
            __ptrace_syscall_info info{};
            EXPECT_GT(ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info), 0);
            if (info.op == PTRACE_SYSCALL_INFO_ENTRY) counts = !memoryCalls.contains(info.entry.nr);
            if (counts && ++run.Stops == meddleAt) meddle(child, info);
        }
        ptrace(PTRACE_SYSCALL, child, nullptr, 0L);
    }
    return run;
}

class QuestionSave : public FolderTest {
 protected:
    QuestionSave() { platform::SetPlaces({Data, Folder / "none", Folder}); }
    ~QuestionSave() override { platform::SetPlaces(); }

    // As many as the file can have; the mark tells one save from another.
    static void Save(const std::string& mark) {
        QuestionList list;
        for (std::int32_t i = 1; i <= kMaxQuestions; ++i) {
            list[i].Text = "What " + mark + " question is number " + std::to_string(i) + "?";
            for (std::int32_t j = 1; j <= kAnswerCount; ++j) list[i].Answers[j] = {"Answer", "LG"};
        }
        SaveQuestions(kQuestionFile, list, kMaxQuestions);
    }

    // A save on either the old file or, if it is absent, not even a folder for one.
    WatchedRun SaveAnew(bool withOldFile, int meddleAt, const Meddle& meddle) const {
        std::filesystem::remove_all(Data.parent_path());
        if (withOldFile) Put(File, OldBytes);
        return RunWatched([] { Save("new"); }, meddleAt, meddle);
    }

    // Everything in the folder but the question file.
    std::set<std::string> Beside() const {
        std::set<std::string> names;
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator(Data, missing)) {
            if (entry.path() != File) names.insert(entry.path().filename());
        }
        return names;
    }

    const std::string OldBytes = "; mine\r\n[HEAD]\r\nitems=1\r\n[NOTES]\r\n" + std::string(5000, 'n');
    const Path Data = Folder / "share/orvane";
    const Path File = Data / "questions.ini";
};

class QuestionSaveKilled : public QuestionSave, public testing::WithParamInterface<bool> {};

TEST_P(QuestionSaveKilled, AtAnyMomentTheFileIsOldOrNew) {
    const bool withOldFile = GetParam();
    const auto killIt = [](pid_t child, const __ptrace_syscall_info&) { kill(child, SIGKILL); };
    const WatchedRun whole = SaveAnew(withOldFile, 0, killIt);
    if (!whole.Watched) GTEST_SKIP() << "this machine lets no process be traced, so none can be cut off";
    ASSERT_EQ(whole.Status, 0);
    ASSERT_LT(whole.Stops, 500) << "so many only if the keys were written one by one";
    QuestionList list;
    ASSERT_EQ(LoadQuestions(kQuestionFile, list), kMaxQuestions);
    ASSERT_EQ(list[kMaxQuestions].Text, "What new question is number 100?");
    const std::string newBytes = BytesOf(File);
    Save("later");
    const std::string laterBytes = BytesOf(File);

    int newOnes = 0;
    for (int stop = 1; stop <= whole.Stops; ++stop) {
        SCOPED_TRACE("killed at stop " + std::to_string(stop));
        const WatchedRun run = SaveAnew(withOldFile, stop, killIt);
        ASSERT_TRUE(WIFSIGNALED(run.Status) && WTERMSIG(run.Status) == SIGKILL) << run.Status;
        const bool exists = std::filesystem::exists(File);
        const std::string bytes = BytesOf(File);
        const bool isNew = exists && bytes == newBytes;
        ASSERT_TRUE(isNew || (exists == withOldFile && bytes == (withOldFile ? OldBytes : "")))
            << "left are " << bytes.size() << " bytes, neither the old file nor the new one";
        newOnes += isNew ? 1 : 0;

        // Nobody can tidy up behind a killed process at once, but what it leaves is out of sight, is not more
        // than one file and goes with the next save.
        const auto left = Beside();
        ASSERT_LE(left.size(), 1U);
        for (const std::string& name : left) EXPECT_TRUE(name.starts_with('.')) << name;
        Save("later");
        ASSERT_TRUE(BytesOf(File) == laterBytes);
        ASSERT_EQ(Beside(), std::set<std::string>());
    }
    EXPECT_GT(newOnes, 0);
    EXPECT_LT(newOnes, whole.Stops);
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutAnOldFile, QuestionSaveKilled, testing::Bool());

#ifdef __x86_64__
TEST_F(QuestionSave, AFailureAtAnyCallLeavesAWholeFileAndNoOther) {
    const WatchedRun whole = SaveAnew(true, 0, {});
    if (!whole.Watched) GTEST_SKIP() << "this machine lets no process be traced, so no call can fail";
    const std::string newBytes = BytesOf(File);
    std::set<std::uint64_t> keptOld;
    for (int stop = 1; stop <= whole.Stops; ++stop) {
        std::uint64_t failed = SYS_exit_group;
        const WatchedRun run = SaveAnew(true, stop, [&](pid_t child, const __ptrace_syscall_info& info) {
            // Without the first two nobody can tidy up or end; the last is the sanitizer's.
            static const std::set<std::uint64_t> spared{SYS_unlink, SYS_exit_group, SYS_sigaltstack};
            if (info.op != PTRACE_SYSCALL_INFO_ENTRY || spared.contains(info.entry.nr)) return;
            failed = info.entry.nr;
            const auto numberAt = reinterpret_cast<void*>(offsetof(user_regs_struct, orig_rax));
            ptrace(PTRACE_POKEUSER, child, numberAt, -1L);
        });
        ASSERT_EQ(run.Status, 0) << "call " << failed;
        const std::string bytes = BytesOf(File);
        ASSERT_TRUE(bytes == OldBytes || bytes == newBytes) << failed;
        EXPECT_TRUE(Beside().empty()) << "call " << failed;
        if (bytes == OldBytes) keptOld.insert(failed);
    }
    for (const std::uint64_t needed : {SYS_openat, SYS_write, SYS_fsync, SYS_rename, SYS_fchmod}) {
        EXPECT_TRUE(keptOld.contains(needed)) << needed;
    }
}
#endif

}  // namespace
}  // namespace orvane
