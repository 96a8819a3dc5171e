#include <atomic>
#include <chrono>
#include <thread>

#include "platform/profile_fixture.h"

using namespace platform;

TEST_F(ProfileFileTest, LeavesAloneWhatIsNoProfileFile) {
    std::filesystem::create_directory(Folder / "folder");
    Put(Folder / "large", "");
    std::filesystem::resize_file(Folder / "large", kMaxProfileBytes + 1);
    ExpectLeftAlone("folder", ProfileState::Unusable);
    ExpectLeftAlone("large", ProfileState::TooLarge);
    ExpectLeftAlone("missing/a.ini", ProfileState::Missing);
    ExpectLeftAlone("large/a.ini", ProfileState::Missing);
    EXPECT_FALSE(ReplaceProfileFile(File, std::string(kMaxProfileBytes + 1, 'x'))) << "nobody could read it";
    EXPECT_EQ(CountIn(Folder), 2);
}

TEST_F(ProfileFileTest, LeavesEqualBytesAlone) {
    Put(File, "1");
    const auto before = std::filesystem::last_write_time(File) - std::chrono::hours(1);
    std::filesystem::last_write_time(File, before);
    EXPECT_TRUE(ReplaceProfileFile(File, "1"));
    EXPECT_EQ(std::filesystem::last_write_time(File), before);
}

TEST_F(ProfileFileTest, TakesAwayWhatAKilledSaveHasLeftAndNothingElse) {
    const Path left = Folder / ".orvane-save-0000000000000000ffffffffffffffff";
    const Path mine = Folder / ".orvane-save-0000000000000000ffffffffffff0000";
    for (const Path& file : {left, mine}) Put(file, "kept");
    EXPECT_TRUE(ReplaceProfileFile(File, "1"));
    EXPECT_FALSE(std::filesystem::exists(left));
    EXPECT_TRUE(std::filesystem::exists(mine));
}

TEST_F(ProfileFileTest, ThoseWhoSaveAtOnceEachSaveAWholeFile) {
    constexpr int kSaves = 100;
    Put(File, std::string(5000, 'a'));
    std::atomic<int> saved = 0;
    std::vector<std::jthread> savers;
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
        ASSERT_TRUE(bytes.size() == 5000 && bytes == std::string(5000, bytes[0]));
    }
    savers.clear();
    EXPECT_EQ(saved, 3 * kSaves);
    EXPECT_EQ(CountIn(Folder), 1);
}
