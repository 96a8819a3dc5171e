#include "platform/profile.h"

#include <windows.h>

#include <chrono>
#include <thread>

#include "platform/profile_fixture.h"

namespace platform {
namespace {

TEST_F(ProfileFileTest, KeepsAttributesAndRefusesWhatIsReadOnly) {
    EXPECT_TRUE(ReplaceProfileFile(File, "old"));
    EXPECT_EQ(GetFileAttributesW(File.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
    SetFileAttributesW(File.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(ReplaceProfileFile(File, "new"));
    EXPECT_EQ(BytesOf(File), "old");
    SetFileAttributesW(File.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(ReplaceProfileFile(File, "new"));
    EXPECT_NE(GetFileAttributesW(File.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

TEST_F(ProfileFileTest, WaitsAMomentForOneWhoHoldsTheFile) {
    using namespace std::chrono_literals;
    for (const DWORD shared : {DWORD{0}, DWORD{FILE_SHARE_READ}}) {
        for (const bool soon : {true, false}) {
            Put(File, "old");
            const HANDLE held =
                CreateFileW(File.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr);
            std::jthread other([held, soon] {
                std::this_thread::sleep_for(soon ? 200ms : 1500ms);
                EXPECT_TRUE(CloseHandle(held));
            });
            EXPECT_EQ(ReplaceProfileFile(File, "new"), soon) << shared;
            other.join();
            EXPECT_EQ(BytesOf(File), soon ? "new" : "old") << shared;
        }
    }
    EXPECT_EQ(CountIn(Folder), 1);
}

}  // namespace
}  // namespace platform
