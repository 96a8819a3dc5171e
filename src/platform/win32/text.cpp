#include "platform/text.h"

#include <algorithm>

#include "platform/win32/toolkit.h"

namespace platform {
namespace {

constexpr UINT kWindows1252 = 1252;

// Piece by piece, since a file may be large and is three times as large on its way.
constexpr std::size_t kPiece = 1 << 16;

bool IsUtf8(std::string_view bytes) {
    // The system takes no more than 31 bits of a size, and a character must not be cut in two.
    while (!bytes.empty()) {
        std::size_t length = std::min(kPiece, bytes.size());
        const auto continues = [&](std::size_t at) {
            return at < bytes.size() && (static_cast<unsigned char>(bytes[at]) & 0xC0) == 0x80;
        };
        for (int i = 0; i < 3 && length > 1 && continues(length); ++i) --length;
        if (MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(length),
                                nullptr, 0) == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

}  // namespace

std::string ToUtf8(std::string_view bytes) {
    if (IsUtf8(bytes)) return std::string(bytes);
    std::string converted;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(kPiece, bytes.size()))) {
        wchar_t wide[kPiece];
        const int length = MultiByteToWideChar(
            kWindows1252, 0, bytes.data(), static_cast<int>(std::min(kPiece, bytes.size())), wide, kPiece);
        converted += FromWide({wide, static_cast<std::size_t>(length)});
    }
    return converted;
}

std::string ToWindows1252(std::string_view text) {
    const std::wstring wide = ToWide(text);
    const int size = static_cast<int>(wide.size());
    std::string converted(wide.size(), '\0');
    WideCharToMultiByte(kWindows1252, 0, wide.data(), size, converted.data(), size, nullptr, nullptr);
    return converted;
}

std::string FoldedCase(std::string_view text) {
    constexpr wchar_t kSigma = 0x3C3, kSigmaAtTheEnd = 0x3C2;  // the small letters of one capital
    std::wstring wide = ToWide(text);
    std::wstring small(wide.size(), L'\0');
    const int size = static_cast<int>(wide.size());
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, wide.data(), size, small.data(), size, nullptr,
                  nullptr, 0);
    std::ranges::replace(small, kSigmaAtTheEnd, kSigma);
    return FromWide(small);
}

}  // namespace platform
