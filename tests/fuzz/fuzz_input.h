#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/profile_encoding.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Ends the program with the name of what does not hold; the fuzzer then keeps the input.
inline void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// A CR for a line end can meet an LF when what stood between them goes: two line ends become one.
inline bool HasLoneCr(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')) return true;
    }
    return false;
}

// The text of a file in either encoding.
inline std::string UnmarkedUtf8(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return platform::ToUtf8(bytes);
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

    bool HasLoneCr() const {
        return ::HasLoneCr(Bytes) || std::any_of(Writes.begin(), Writes.end(), [](const FuzzedWrite& write) {
                   return write.Value && ::HasLoneCr(*write.Value);
               });
    }
};
