#include "frame/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/locale.h"

namespace orvane {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

struct ParsedNumber {
    double Value = 0;
    std::size_t End = 0;  // behind the number's last character; 0 if there is no number
};

// Where the first significant digit of an unsigned number stands: above 0 left of the point, below 0 right.
// The exponent is held within bounds that no text of a size that fits the memory can outweigh.
std::int64_t DecimalMagnitude(std::string_view number) {
    constexpr std::int64_t kBound = std::int64_t{1} << 56;
    const std::size_t mark = number.find_first_of("eE");
    const std::string_view digits = number.substr(0, mark);
    const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<std::int64_t>(std::min(digits.find_first_of("123456789"), digits.size()));

    std::int64_t exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view power = number.substr(mark + 1);
        const bool negative = power.front() == '-';
        if (power.front() == '-' || power.front() == '+') power.remove_prefix(1);
        for (const char c : power) exponent = std::min(exponent * 10 + (c - '0'), kBound);
        if (negative) exponent = -exponent;
    }
    return point - first + exponent;
}

ParsedNumber ParseNumber(std::string_view text) {
    const auto start =
        static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsBlank) - text.begin());
    std::string_view number = text.substr(start);
    const bool negative = !number.empty() && number.front() == '-';
    if (negative || (!number.empty() && number.front() == '+')) number.remove_prefix(1);
    // from_chars would also take "inf", "nan" and a second sign.
    if (number.empty() || !(IsDigit(number.front()) || number.front() == '.')) return {};

    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::invalid_argument) return {};
    number = number.substr(0, static_cast<std::size_t>(end - number.data()));
    if (error == std::errc::result_out_of_range) value = DecimalMagnitude(number) > 0 ? kLargest : 0;
    return {negative ? -value : value, static_cast<std::size_t>(end - text.data())};
}

std::int32_t ToLong(double whole) {
    constexpr double kLow = std::numeric_limits<std::int32_t>::min();
    constexpr double kHigh = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(whole)) return 0;
    return static_cast<std::int32_t>(std::clamp(whole, kLow, kHigh));
}

}  // namespace

double LeadingNumber(std::string_view Text) { return ParseNumber(Text).Value; }

bool IsNumberText(std::string_view Text) {
    const std::size_t end = ParseNumber(Text).End;
    return end > 0 && std::all_of(Text.begin() + static_cast<std::ptrdiff_t>(end), Text.end(), IsBlank);
}

std::int32_t RoundToLong(double Value) {
    const double below = std::floor(Value);
    const double rest = Value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0);
    return ToLong(up ? below + 1 : below);
}

std::int32_t FloorToLong(double Value) { return ToLong(std::floor(Value)); }

std::int32_t ClampToLong(std::int64_t Value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(Value, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

std::string NumberText(std::int32_t Value) { return std::to_string(Value); }

std::string NumberText(double Value) {
    if (std::isnan(Value)) return "0";
    const double magnitude = std::min(std::abs(Value), kLargest);

    // Scientific form with 15 digits, "d.dddddddddddddde+x": the digits are laid out again without exponent.
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                            std::chars_format::scientific, 14);
    const std::string_view scientific(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t mark = scientific.find('e');
    std::string digits(1, scientific[0]);
    digits += scientific.substr(2, mark - 2);
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.empty()) return "0";

    const auto exponent = static_cast<int>(DecimalMagnitude(scientific)) - 1;
    std::string whole = "0";
    std::string fraction = digits;
    if (exponent < 0) {
        fraction.insert(0, static_cast<std::size_t>(-exponent - 1), '0');
    } else {
        const auto wholeDigits = static_cast<std::size_t>(exponent) + 1;
        whole = digits.substr(0, wholeDigits);
        whole.resize(wholeDigits, '0');
        fraction.erase(0, wholeDigits);
    }
    std::string text = Value < 0 ? "-" + whole : whole;
    if (!fraction.empty()) text += platform::DecimalSeparator() + fraction;
    return text;
}

}  // namespace orvane
