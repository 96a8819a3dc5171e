#include "platform/places.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/application.h"

extern "C" std::uintptr_t __stack_chk_guard;  // NOLINT(bugprone-reserved-identifier)

namespace platform {
namespace {

TEST(Win32Desktop, NamesOfAllKindsLeadToOnePlace) {
    const Places places{LR"(C:\u\Orvane)", LR"(C:\Program Files\Orvane)"};
    const struct {
        const char* Name;
        std::wstring_view File;
    } cases[] = {
        {"c:\\questions.ini", LR"(C:\u\Orvane\questions.ini)"},
        {"x.ini", LR"(C:\u\Orvane\x.ini)"},
        {"../a//x.ini. ", LR"(C:\u\Orvane\a\x.ini)"},
        {"C:/a/../x.ini", LR"(C:\u\Orvane\x.ini)"},
        {"c:/a/x.ini", LR"(c:\a\x.ini)"},
        {"D:\\..\\J\u00FCrgen.ini", L"D:\\J\u00FCrgen.ini"},
        {"//server/share/../../x/y.ini", L""},
        {R"(\\server\share\a\x.ini)", LR"(\\server\share\a\x.ini)"},
        {R"(\\?\C:\x.ini)", L""},
        {"con", L""},
        {"d:\\NUL .txt\\x.ini", L""},
        {"lpt\u00B9.ini", L""},
        {"consul.ini", LR"(C:\u\Orvane\consul.ini)"},
        {"a:b", L""},
        {"d:\\a\\", L""},
    };
    for (const auto& [name, file] : cases) EXPECT_EQ(PathOfName(name, places).native(), file) << name;
    EXPECT_EQ(PathOfName("x.ini", {}), "") << "must not become a file of the current directory";
    EXPECT_EQ(ShippedFile(R"(c:\U\orvane\a\x.ini)", places), LR"(C:\Program Files\Orvane\a\x.ini)");
    for (const char* outside : {R"(C:\u\x.ini)", R"(C:\u\Orvane2\x.ini)", R"(C:\u\Orvane)"})
        EXPECT_EQ(ShippedFile(outside, places), "") << outside;
    EXPECT_TRUE(DesktopPlaces().UserData.is_absolute());
    EXPECT_TRUE(std::filesystem::exists(DesktopPlaces().Program / "core_tests.exe"));
}

TEST(Win32Desktop, WhatIsCopiedTakesThePlaceOfAllThatWas) {
    const UINT picture = RegisterClipboardFormatW(L"Picture");
    OpenClipboard(nullptr);
    SetClipboardData(picture, GlobalAlloc(GMEM_MOVEABLE, 1));
    CloseClipboard();
    EXPECT_TRUE(IsClipboardFormatAvailable(picture));
    SetClipboardText("text");
    EXPECT_FALSE(IsClipboardFormatAvailable(picture));
}

TEST(Win32Desktop, TheProgramIsHardened) {
    const auto* image = reinterpret_cast<const char*>(GetModuleHandleW(nullptr));
    const auto& start = *reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto& header = *reinterpret_cast<const IMAGE_NT_HEADERS*>(image + start.e_lfanew);
    constexpr WORD kHardened = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT |
                               IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA;
    EXPECT_EQ(header.OptionalHeader.DllCharacteristics & kHardened, kHardened);
    EXPECT_NE(__stack_chk_guard, 0U);
    EXPECT_EQ(__stack_chk_guard & 0xFF, 0U);
}

}  // namespace
}  // namespace platform
