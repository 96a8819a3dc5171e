// Any bytes as a file, any names and values: reading never fails; a write gives what was written and changes
// nothing else; one open text takes writes just as the file would take them one by one.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/places.h"
#include "platform/profile_text.h"
#include "platform/text.h"

namespace {

using platform::FoldedCase;
using platform::ProfileText;
using platform::ToUtf8;

// Ends the program with the name of what does not hold; the fuzzer then keeps the input.
void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// A CR for a line end can meet an LF when what stood between them goes: two line ends become one.
bool HasLoneCr(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')) return true;
    }
    return false;
}

// The text of a file in either encoding.
std::string UnmarkedUtf8(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return ToUtf8(bytes);
}

struct FuzzedWrite {
    std::string Section, Key;
    std::optional<std::string> Value;

    // Lines of their own in a value can be keys and sections of their own.
    bool AddsLines() const { return Value && Value->find_first_of("\r\n") != std::string::npos; }
};

// An input made into up to four writes and the file that they go to.
struct FuzzedFile {
    std::vector<FuzzedWrite> Writes;
    std::string Bytes;

    FuzzedFile(const std::uint8_t* data, std::size_t size) {
        std::string_view rest(reinterpret_cast<const char*>(data), size);
        const auto take = [&rest](std::size_t most) {
            if (rest.empty()) return std::string();
            const std::string taken(rest.substr(1, static_cast<unsigned char>(rest.front()) % most));
            rest.remove_prefix(1 + taken.size());
            return taken;
        };
        for (std::size_t count = 1 + take(4).size(); count > 0; --count) {
            FuzzedWrite write{take(8), take(8), take(255)};
            if (write.Value->starts_with("-")) write.Value.reset();
            Writes.push_back(std::move(write));
        }
        Bytes = rest;
    }

    bool LoneCr() const {
        return HasLoneCr(Bytes) || std::any_of(Writes.begin(), Writes.end(), [](const FuzzedWrite& write) {
                   return write.Value && HasLoneCr(*write.Value);
               });
    }
};

std::string Trim(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return std::string(text);
}

std::string Name(std::string_view text) { return FoldedCase(ToUtf8(Trim(text))); }

std::string Promised(const std::optional<std::string>& value) {
    if (!value) return {};
    const std::string text = ToUtf8(*value);
    std::string line = Trim(text.substr(0, text.find_first_of(std::string_view("\r\n\0", 3))));
    if (line.size() > 1 && line.front() == line.back() && (line.front() == '\'' || line.front() == '"')) {
        line = line.substr(1, line.size() - 2);
    }
    std::size_t characters = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool begins = (static_cast<unsigned char>(line[i]) & 0xC0) != 0x80;
        if (begins && ++characters > 254) return line.substr(0, i);
    }
    return line;
}

// Whatever could be a section and a key of the text, and more.
std::set<std::pair<std::string, std::string>> KeysIn(const std::string& text) {
    std::set<std::pair<std::string, std::string>> keys;
    std::istringstream stream(text);
    std::string section;
    for (std::string whole; std::getline(stream, whole);) {
        const std::string line = Trim(std::string_view(whole).substr(0, whole.find_last_not_of('\r') + 1));
        if (line.starts_with("[")) section = line.substr(1, line.find(']') - 1);
        if (line.find('=') != std::string::npos) keys.emplace(section, line.substr(0, line.find('=')));
    }
    return keys;
}

bool OnlyOneLineDiffers(std::string_view before, std::string_view after) {
    const auto same = std::ranges::mismatch(before, after).in1 - before.begin();
    before.remove_prefix(static_cast<std::size_t>(same));
    after.remove_prefix(static_cast<std::size_t>(same));
    while (!before.empty() && !after.empty() && before.back() == after.back()) {
        before.remove_suffix(1);
        after.remove_suffix(1);
    }
    return before.find_first_of("\r\n") == std::string_view::npos;
}

bool OnlyLeavesOut(std::string_view before, std::string_view after) {
    for (const char c : before) {
        if (after.starts_with(c)) after.remove_prefix(1);
    }
    return after.empty();
}

// Writes to the file as if there were nothing but the file, and gives its new bytes.
std::string Written(const std::string& file, const FuzzedWrite& write) {
    ProfileText text(file);
    Require(text.Bytes() == file, "a text that nobody wrote to is the file");
    const bool accepted = text.SetValue(write.Section, write.Key, write.Value);
    std::string bytes = text.Bytes();
    if (!accepted) {
        Require(bytes == file, "a refused write changes nothing");
        return bytes;
    }
    ProfileText old(file);
    ProfileText reread(bytes);
    const std::string value = reread.Value(write.Section, write.Key);
    Require(value == Promised(write.Value), "a value reads as promised");
    Require(text.Value(write.Section, write.Key) == value, "the open text reads like the file");

    const std::string before = UnmarkedUtf8(file);
    const std::string after = UnmarkedUtf8(bytes);
    Require(write.Value ? OnlyOneLineDiffers(before, after) : OnlyLeavesOut(before, after),
            "all other lines stay");
    for (const auto& [section, key] : KeysIn(before)) {
        if (write.AddsLines() || (Name(section) == Name(write.Section) && Name(key) == Name(write.Key)))
            continue;
        const std::string was = old.Value(section, key);
        Require(reread.Value(section, key) == was, "all other keys stay");
        Require(text.Value(section, key) == was, "all other keys stay in the open text");
    }
    return bytes;
}

// No name leads out of the user's folder.
void RequireInside(const std::string& name) {
    const platform::Places places{"/u/data", {}, {}};
    const auto path = platform::PathOfName(name, places);
    Require(path.empty() || name.starts_with('/') || name.starts_with("~/") ||
                !platform::PathInUserData(path, places).empty(),
            "names stay inside");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const FuzzedFile input(data, size);
    ProfileText open(input.Bytes);
    std::string file = input.Bytes;
    for (const FuzzedWrite& write : input.Writes) {
        RequireInside(write.Value.value_or(write.Section + write.Key));
        file = Written(file, write);
        open.SetValue(write.Section, write.Key, write.Value);
    }
    Require(input.LoneCr() || UnmarkedUtf8(open.Bytes()) == UnmarkedUtf8(file),
            "writes together are writes one by one");
    return 0;
}
