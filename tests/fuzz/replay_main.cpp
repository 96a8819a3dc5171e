// Runs a fuzz target without a fuzzer, on inputs drawn from the marks that profile files are made of, the
// same at every run. Their number can be given on the command line.

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
    using namespace std::string_view_literals;
    constexpr std::array kMarks = {
        "[s]"sv,  "[S]\r\n"sv,  "[t] x\n"sv, "["sv,       "]"sv,
        "="sv,    "k="sv,       "K = "sv,    "j=1\r\n"sv, "\n"sv,
        "\r\n"sv, "\r"sv,       " "sv,       "\t"sv,      "\0"sv,
        "\""sv,   "'"sv,        ";"sv,       "s"sv,       "k"sv,
        "-"sv,    "é"sv,        "É"sv,       "ж"sv,       "\xEF\xBB\xBF"sv,
        "\xE9"sv, "\x81\x80"sv, "Ã©"sv,      "\1s"sv,     "\1k"sv,
        "\2"sv,   "\x10"sv,     "\xF0"sv,    "c:\\"sv,    "..\\"sv,
        "𝄞"sv,
    };
    const int runs = count > 1 ? std::atoi(arguments[1]) : 20'000;
    std::mt19937 random;
    const auto draw = [&random](std::size_t below) { return random() % below; };
    for (int i = 0; i < runs; ++i) {
        std::string input;
        for (std::size_t marks = draw(60); marks > 0; --marks) {
            const std::string_view mark = kMarks[draw(kMarks.size())];
            for (std::size_t times = draw(40) == 0 ? 200 : 1; times > 0; --times) input += mark;
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
    std::printf("%d inputs\n", runs);
    return 0;
}
