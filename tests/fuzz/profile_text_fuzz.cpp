// Any bytes as a file, any names and values: one open text takes writes just as the file would take them one
// by one, and reads like the file. An input is the file and then a section, a key and a value in turn, with a
// mark between them; another stands for CR LF, since a lone CR can become part of one when what is behind it
// goes.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "platform/profile_text.h"
#include "platform/text.h"

namespace {

using platform::ProfileText;

constexpr char kNext = '\x1F';
constexpr char kCrLf = '\x1E';

// The fuzzer keeps an input that ends the program.
void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// Whatever the encoding, which writes one by one may widen earlier.
std::string TextOf(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return platform::ToUtf8(bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string input;
    for (const char c : std::string(reinterpret_cast<const char*>(data), size)) {
        if (c != '\r') input += c == kCrLf ? std::string("\r\n") : std::string(1, c);
    }
    std::istringstream parts(input);
    std::string file;
    std::getline(parts, file, kNext);
    ProfileText open(file);
    std::string section;
    std::string key;
    for (std::string value; std::getline(parts, section, kNext) && std::getline(parts, key, kNext);) {
        std::getline(parts, value, kNext);
        const auto given = value.starts_with("-") ? std::nullopt : std::optional<std::string_view>(value);
        ProfileText single(file);
        const bool accepted = single.SetValue(section, key, given);
        Require(accepted || single.Bytes() == file, "a refused write changes nothing");
        file = single.Bytes();
        open.SetValue(section, key, given);
        Require(TextOf(open.Bytes()) == TextOf(file), "writes together are writes one by one");
        const std::string read = ProfileText(file).Value(section, key);
        Require(open.Value(section, key) == read, "the open text reads like the file");
    }
    return 0;
}

#ifndef ORVANE_FUZZER
// Without a fuzzer: inputs of what such files are made of, the same at every run.
int main() {
    const std::string_view marks[] = {
        "-", "[s]\n", "[S]", "\n[t] x\n", "[", "]", "=", "k=", "\nK = ", "j=1\n", "\n",      "\x1E",
        " ", "\"",    ";",   "s",         "k", "é", "ж", "Ã©", "𝄞",      "\xE9",  "\x81\x80"};
    std::mt19937 random;
    const auto draw = [&random](std::size_t below) { return random() % below; };
    for (int i = 0; i < 20'000; ++i) {
        std::string input;
        for (std::size_t part = draw(5) * 3; part < 16; ++part) {
            for (std::size_t count = draw(part % 3 == 0 ? 9 : 2); count > 0; --count) {
                input += marks[draw(std::size(marks))];
            }
            if (draw(3) > 0 && part % 3 == 1) input += "s";
            if (draw(3) > 0 && part % 3 == 2) input += "k";
            input += kNext;
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
}
#endif
