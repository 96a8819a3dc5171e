#include "platform/profile_encoding.h"

#include <algorithm>
#include <iterator>

namespace platform {
namespace {

struct Character {
    char32_t Code = 0;
    std::size_t Length = 0;  // in bytes; 0 where the text does not begin with a character
};

Character FirstCharacter(std::string_view text) {
    // Behind the end comes a byte that continues nothing.
    const auto byte = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) return {lead, text.empty() ? 0U : 1U};
    if (lead < 0xC2 || lead > 0xF4) return {};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) return {};
        code = (code << 6) | (byte(i) & 0x3FU);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < kLeast[length] || code > 0x10FFFF || surrogate) return {};
    return {code, length};
}

void Append(std::string& text, char32_t code) {
    const auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto addRest = [add, code](int shift) { add(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) return add(code);
    if (code < 0x800) {
        add(0xC0 | (code >> 6));
    } else {
        if (code < 0x10000) {
            add(0xE0 | (code >> 12));
        } else {
            add(0xF0 | (code >> 18));
            addRest(12);
        }
        addRest(6);
    }
    addRest(0);
}

// Windows-1252 from 0x80 to 0x9F; all other bytes have the number of their character.
constexpr char32_t kWindows1252[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// Capital letters whose small letter lies at a fixed distance; with a step of 2 the two take turns.
struct Capitals {
    char32_t First = 0;
    char32_t Last = 0;
    int Distance = 0;
    char32_t Step = 1;
};

constexpr Capitals kCapitals[] = {
    {U'A', U'Z', 32},       {0x00C0, 0x00D6, 32},   {0x00D8, 0x00DE, 32},   {0x0100, 0x012E, 1, 2},
    {0x0132, 0x0136, 1, 2}, {0x0139, 0x0147, 1, 2}, {0x014A, 0x0176, 1, 2}, {0x0178, 0x0178, -121},
    {0x0179, 0x017D, 1, 2}, {0x0386, 0x0386, 38},   {0x0388, 0x038A, 37},   {0x038C, 0x038C, 64},
    {0x038E, 0x038F, 63},   {0x0391, 0x03A1, 32},   {0x03A3, 0x03AB, 32},   {0x03C2, 0x03C2, 1},
    {0x0400, 0x040F, 80},   {0x0410, 0x042F, 32},   {0x0460, 0x0480, 1, 2}, {0x048A, 0x04BE, 1, 2},
    {0x04C0, 0x04C0, 15},   {0x04C1, 0x04CD, 1, 2}, {0x04D0, 0x052E, 1, 2}, {0x1E00, 0x1E94, 1, 2},
    {0x1EA0, 0x1EFE, 1, 2},
};

char32_t SmallLetter(char32_t code) {
    const auto holds = [code](const Capitals& range) { return code <= range.Last; };
    const auto* range = std::find_if(std::begin(kCapitals), std::end(kCapitals), holds);
    if (range == std::end(kCapitals) || code < range->First || (code - range->First) % range->Step != 0)
        return code;
    return static_cast<char32_t>(static_cast<int>(code) + range->Distance);
}

}  // namespace

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = FirstCharacter(bytes).Length;
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string ToUtf8(std::string_view bytes) {
    if (IsUtf8(bytes)) return std::string(bytes);
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        Append(text, byte >= 0x80 && byte <= 0x9F ? kWindows1252[byte - 0x80] : char32_t{byte});
    }
    return text;
}

std::optional<std::string> ToWindows1252(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const auto [code, length] = FirstCharacter(text);
        char32_t byte = code;
        if (code > 0xFF || (code >= 0x80 && code <= 0x9F)) {
            const auto* found = std::find(std::begin(kWindows1252), std::end(kWindows1252), code);
            if (found == std::end(kWindows1252)) return {};
            byte = 0x80 + static_cast<char32_t>(found - std::begin(kWindows1252));
        }
        bytes += static_cast<char>(static_cast<unsigned char>(byte));
        text.remove_prefix(length);
    }
    return bytes;
}

std::string FoldedCase(std::string_view text) {
    // Nearly every name is plain ASCII.
    std::string folded(text);
    bool ascii = true;
    for (char& c : folded) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
        if (static_cast<unsigned char>(c) >= 0x80) ascii = false;
    }
    if (ascii) return folded;

    folded.clear();
    while (!text.empty()) {
        const auto [code, length] = FirstCharacter(text);
        Append(folded, SmallLetter(code));
        text.remove_prefix(length);
    }
    return folded;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    for (; end < text.size() && count > 0; --count) end += FirstCharacter(text.substr(end)).Length;
    return text.substr(0, end);
}

}  // namespace platform
