#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iostream>
#include <optional>
#include <set>
#include <vector>

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

// Runs the function in a process of its own and kills that at the stop of this number, if it gets so far.
WatchedRun RunWatched(const std::function<void()>& function, int killAt) {
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
    bool started = false;
    bool counts = false;
    while (TEMP_FAILURE_RETRY(waitpid(child, &run.Status, 0)) == child && WIFSTOPPED(run.Status)) {
        int signal = WSTOPSIG(run.Status);
        if (!started) {
            started = true;
            signal = 0;
            const long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
            run.Watched = ptrace(PTRACE_SETOPTIONS, child, nullptr, options) == 0;
        } else if (signal == (SIGTRAP | 0x80)) {
            signal = 0;
            __ptrace_syscall_info info{};
            if (ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info) <= 0) run.Watched = false;
            if (info.op == PTRACE_SYSCALL_INFO_ENTRY) counts = !memoryCalls.contains(info.entry.nr);
            if (counts) ++run.Stops;
        }
        if (!run.Watched || run.Stops == killAt) {
            kill(child, SIGKILL);
        } else {
            ptrace(PTRACE_SYSCALL, child, nullptr, static_cast<long>(signal));
        }
    }
    return run;
}

class QuestionSave : public FolderTest {
 protected:
    QuestionSave() { platform::SetPlaces({Data, Folder / "none", Folder}); }
    ~QuestionSave() override { platform::SetPlaces(); }

    // As many as the file can have; the mark tells one save from another.
    static QuestionList Questions(const std::string& mark) {
        QuestionList list;
        for (std::int32_t i = 1; i <= kMaxQuestions; ++i) {
            list[i].Text = "What " + mark + " question is number " + std::to_string(i) + "?";
            for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
                list[i].Answers[j] = {"An answer, and " + mark, "LG"};
            }
        }
        return list;
    }

    static void Save(const QuestionList& list, std::string_view name = kQuestionFile) {
        SaveQuestions(name, list, kMaxQuestions);
    }

    // A file that somebody has worked on by hand.
    static std::string OldBytes() {
        return "; mine\r\n[HEAD]\r\nitems=1\r\n\r\n[QUESTION_001]\r\nquestion=Old?\r\n[NOTES]\r\n" +
               std::string(5000, 'n') + "\r\n";
    }

    bool HoldsOldBytes() const { return BytesOf(File) == OldBytes(); }

    // Everything in the folder but the question file.
    std::vector<std::string> Beside() const {
        std::vector<std::string> names;
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator(Data, missing)) {
            if (entry.path() != File) names.push_back(entry.path().filename());
        }
        return names;
    }

    void ExpectOldFileAlone() const {
        EXPECT_TRUE(HoldsOldBytes()) << std::filesystem::file_size(File) << " bytes";
        EXPECT_EQ(Beside(), std::vector<std::string>());
    }

    // Either the old file or, if it is absent, not even a folder for one.
    void StartAnew(bool withOldFile) const {
        std::filesystem::remove_all(Data.parent_path());
        if (!withOldFile) return;
        Put(File, OldBytes());
        std::filesystem::permissions(File, kOldRights);
    }

    void KillEverywhere(bool withOldFile);

    static constexpr auto kOldRights = static_cast<std::filesystem::perms>(0640);
    const Path Data = Folder / "share/orvane";
    const Path File = Data / "questions.ini";
};

void QuestionSave::KillEverywhere(bool withOldFile) {
    const QuestionList list = Questions("new");
    const QuestionList laterList = Questions("later");
    const auto save = [&list] { Save(list); };

    StartAnew(withOldFile);
    constexpr int kMostStops = 500;  // so many only if the keys were written one by one
    const WatchedRun whole = RunWatched(save, kMostStops);
    if (!whole.Watched) GTEST_SKIP() << "this machine lets no process be traced, so none can be cut off";
    ASSERT_TRUE(WIFEXITED(whole.Status) && WEXITSTATUS(whole.Status) == 0)
        << "ended with " << whole.Status << " after " << whole.Stops << " stops";
    const std::string newBytes = BytesOf(File);
    ASSERT_NE(newBytes.find("What new question is number 100?"), std::string::npos);
    ASSERT_EQ(Beside().size(), 0U);
    const auto newRights = std::filesystem::status(File).permissions();
    if (withOldFile) {
        EXPECT_EQ(newRights, kOldRights);
    }
    Save(laterList);
    const std::string laterBytes = BytesOf(File);
    ASSERT_TRUE(laterBytes != newBytes);

    int oldOnes = 0;
    int newOnes = 0;
    int strays = 0;
    for (int stop = 1; stop <= whole.Stops; ++stop) {
        SCOPED_TRACE("killed at stop " + std::to_string(stop));
        StartAnew(withOldFile);
        const WatchedRun run = RunWatched(save, stop);
        ASSERT_TRUE(WIFSIGNALED(run.Status) && WTERMSIG(run.Status) == SIGKILL) << run.Status;
        const bool exists = std::filesystem::exists(File);
        const std::string bytes = BytesOf(File);
        const bool isNew = exists && bytes == newBytes;
        ASSERT_TRUE(isNew || (exists == withOldFile && bytes == (withOldFile ? OldBytes() : "")))
            << "left are " << bytes.size() << " bytes, neither the old file nor the new one";
        if (exists) {
            EXPECT_EQ(std::filesystem::status(File).permissions(), newRights);
        }
        ++(isNew ? newOnes : oldOnes);

        // Nobody can tidy up behind a killed process at once, but what it leaves is out of sight, is not more
        // than one file and stops no later save.
        const auto left = Beside();
        ASSERT_LE(left.size(), 1U);
        if (!left.empty()) {
            ++strays;
            EXPECT_TRUE(left.front().starts_with('.')) << left.front();
        }
        Save(laterList);
        ASSERT_TRUE(BytesOf(File) == laterBytes);
        ASSERT_LE(Beside().size(), left.size());
    }
    EXPECT_GT(oldOnes, 0);
    EXPECT_GT(newOnes, 0);
    std::cout << "Killed at " << whole.Stops << " points: " << oldOnes
              << (withOldFile ? " times the old file, " : " times no file, ") << newOnes
              << " times the new one, whole; " << strays << " times a stray file beside it.\n";
}

TEST_F(QuestionSave, KilledAtAnyMomentTheFileIsOldOrNew) { KillEverywhere(true); }

TEST_F(QuestionSave, KilledAtAnyMomentAFirstSaveLeavesNoFileOrAWholeOne) { KillEverywhere(false); }

// Makes the folder a disk of its own for this process alone.
bool MountDisk(const std::filesystem::path& folder, const std::string& options) {
    return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

bool LimitFileSize(rlim_t bytes) {
    rlimit limit{};
    if (getrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    return setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

TEST_F(QuestionSave, AFullDiskLeavesTheOldFileAlone) {
    const QuestionList list = Questions("new");
    // Room for nothing but the old file, for a part of the new one, and for its bytes but not its name.
    for (const char* disk : {"size=8k", "size=20k", "size=1m,nr_inodes=2"}) {
        SCOPED_TRACE(disk);
        StartAnew(true);
        const pid_t child = fork();
        if (child == 0) {
            const bool mounted = MountDisk(Data, disk);
            // Whoever may not mount anything has a limit on the size of files at least.
            if (mounted) {
                Put(File, OldBytes());
            } else {
                EXPECT_TRUE(LimitFileSize(8192));
            }
            Save(list);
            ExpectOldFileAlone();

            if (mounted) {
                const char* const room = "size=1m,nr_inodes=9";
                EXPECT_EQ(mount(nullptr, Data.c_str(), nullptr, MS_REMOUNT, room), 0);
            } else {
                EXPECT_TRUE(LimitFileSize(RLIM_INFINITY));
            }
            Save(list);
            EXPECT_FALSE(HoldsOldBytes()) << "only the lack of room was in the way";
            EXPECT_TRUE(Beside().empty());
            std::fflush(stdout);
            _exit(HasFailure() ? 1 : 0);
        }
        int status = 0;
        ASSERT_EQ(TEMP_FAILURE_RETRY(waitpid(child, &status, 0)), child);
        EXPECT_EQ(status, 0);
    }
}

TEST_F(QuestionSave, AFileOrFolderThatCannotBeWrittenStaysAsItWas) {
    const QuestionList list = Questions("new");
    StartAnew(true);
    std::filesystem::permissions(File, static_cast<std::filesystem::perms>(0444));
    Save(list);
    ExpectOldFileAlone();
    EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(File).permissions()), 0444U);
    std::filesystem::permissions(File, kOldRights);
    Save(list);
    EXPECT_FALSE(HoldsOldBytes()) << "only the rights were in the way";

    // Only the user's own folder is made for a file.
    const Path missing = Folder / "missing/questions.ini";
    const auto before = CountIn(Folder);
    Save(list, missing.string());
    EXPECT_EQ(CountIn(Folder), before);
    std::filesystem::create_directory(missing.parent_path());
    Save(list, missing.string());
    EXPECT_EQ(CountIn(missing.parent_path()), 1) << "only the folder was in the way";
}

}  // namespace
}  // namespace orvane
