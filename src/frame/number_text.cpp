#include "frame/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/locale.h"

namespace orvane {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

struct ParsedNumber {
    double Value = 0;
    std::size_t End = 0;  // behind the number's last character; 0 if there is no number
};

// A number without sign that is beyond the range of a double: the largest, or 0 where it is too small for
// one.
double NearestDouble(std::string_view number) {
    const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), mark);
    const std::size_t first = number.find_first_of("123456789");
    if (first == std::string_view::npos) return 0;
    // Where its first digit stands: so many places ahead of the point.
    auto places = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    std::string_view digits = number.substr(std::min(mark + 1, number.size()));
    if (digits.starts_with('+')) digits.remove_prefix(1);
    std::int32_t exponent = 0;
    const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec;
    if (error == std::errc::result_out_of_range) places = digits.front() == '-' ? -1 : 1;
    places += exponent;
    return places > 0 ? std::numeric_limits<double>::max() : 0;
}

ParsedNumber ParseNumber(std::string_view text) {
    const auto start = static_cast<std::size_t>(std::ranges::find_if_not(text, IsBlank) - text.begin());
    std::string_view number = text.substr(start);
    const bool negative = !number.empty() && number.front() == '-';
    if (negative || (!number.empty() && number.front() == '+')) number.remove_prefix(1);
    // from_chars would also take "inf", "nan" and a second sign.
    if (number.empty() || (!IsDigit(number.front()) && number.front() != '.')) return {};

    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::invalid_argument) return {};
    number = number.substr(0, static_cast<std::size_t>(end - number.data()));
    if (error == std::errc::result_out_of_range) value = NearestDouble(number);
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
    const double magnitude = std::min(std::abs(Value), std::numeric_limits<double>::max());

    constexpr int kDigits = 15;
    const auto put = [magnitude](std::chars_format form, int digits) {
        std::string text(static_cast<std::size_t>(digits) + 20, '\0');  // with a point and an exponent
        const char* const end =
            std::to_chars(text.data(), text.data() + text.size(), magnitude, form, digits).ptr;
        text.resize(static_cast<std::size_t>(end - text.data()));
        return text;
    };
    std::string text = put(std::chars_format::general, kDigits);
    if (const std::size_t mark = text.find('e'); mark != std::string::npos) {
        int exponent = 0;
        std::from_chars(text.data() + text.find_first_not_of("e+", mark), text.data() + text.size(),
                        exponent);
        if (exponent > 0) {
            text.erase(mark).erase(1, 1).resize(static_cast<std::size_t>(exponent) + 1, '0');
        } else {
            text = put(std::chars_format::fixed, kDigits - 1 - exponent);
        }
    }
    if (const std::size_t point = text.find('.'); point != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.replace(point, 1, point + 1 < text.size() ? platform::DecimalSeparator() : "");
    }
    return Value < 0 ? "-" + text : text;
}

}  // namespace orvane
