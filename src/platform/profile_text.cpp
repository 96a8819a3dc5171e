#include "platform/profile_text.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "platform/text.h"

namespace platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";

bool IsLineBreak(char c) { return c == '\n' || c == '\r'; }

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// Of a header, "[Name]" and perhaps more text behind it.
std::optional<std::string_view> SectionName(std::string_view line) {
    line = Trimmed(line);
    const std::size_t end = line.find(']');
    if (!line.starts_with('[') || end == std::string_view::npos) return {};
    return Trimmed(line.substr(1, end - 1));
}

std::optional<std::string_view> KeyName(std::string_view line) {
    const std::size_t end = line.find('=');
    if (end == std::string_view::npos) return {};
    const std::string_view name = Trimmed(line.substr(0, end));
    if (name.empty() || name.front() == '[' || name.front() == ';') return {};
    return name;
}

struct Line {
    std::size_t Begin = 0;
    std::string_view Text{};  // without its line end
    std::size_t End = 0;      // behind its line end
    std::string_view Name{};
};

// The line that begins there, or the rest of one.
Line LineAt(std::string_view text, std::size_t begin) {
    std::size_t stop = begin;
    while (stop < text.size() && !IsLineBreak(text[stop])) ++stop;
    std::size_t end = std::min(stop + 1, text.size());
    if (text.substr(stop).starts_with("\r\n")) ++end;
    return {begin, text.substr(begin, stop - begin), end};
}

std::string_view FirstLine(std::string_view text) { return LineAt(text, 0).Text; }

// The first header or key from the line on that begins there. Lines without the mark cost next to nothing.
template <char kMark, auto kNameOf>
std::optional<Line> Next(std::string_view text, std::size_t begin) {
    while ((begin = text.find(kMark, begin)) != std::string_view::npos) {
        while (begin > 0 && !IsLineBreak(text[begin - 1])) --begin;
        Line line = LineAt(text, begin);
        if (const auto name = kNameOf(line.Text)) {
            line.Name = *name;
            return line;
        }
        begin = line.End;
    }
    return {};
}
constexpr auto kNextHeader = Next<']', SectionName>;
constexpr auto kNextKey = Next<'=', KeyName>;

// Where the section that begins here ends: at the next header.
std::size_t SectionEnd(std::string_view text, std::size_t begin) {
    const auto next = kNextHeader(text, LineAt(text, begin).End);
    return next ? next->Begin : text.size();
}

// Nearly every name is plain ASCII, and files have many.
std::string Folded(std::string_view name) {
    std::string folded(name);
    for (char& c : folded) {
        if (static_cast<unsigned char>(c) >= 0x80) return FoldedCase(name);
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
    }
    return folded;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    const auto* end = std::ranges::find_if(text, [&](char c) { return begins(c) && count-- == 0; });
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

std::string_view ValueOf(std::string_view line) {
    std::string_view value = line.substr(line.find('=') + 1);
    value = Trimmed(value.substr(0, value.find('\0')));
    if (value.size() >= 2 && value.front() == value.back() &&
        (value.front() == '"' || value.front() == '\'')) {
        value = value.substr(1, value.size() - 2);
    }
    return FirstCharacters(value, kLongestProfileValue);
}

// The line end that new lines take: that of the first line, but a lone CR only if there is nothing else,
// since few programs take it for one.
std::string_view LineEndOf(std::string_view text) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return text.find('\r') == std::string_view::npos ? "\r\n" : "\r";
    return end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

std::optional<Line> FindKey(std::string_view section, const std::string& folded, std::size_t begin = 0) {
    auto line = kNextKey(section, begin);
    while (line && Folded(line->Name) != folded) line = kNextKey(section, line->End);
    return line;
}

// All lines of the key: of equal ones left over the next would come to light.
void RemoveKey(std::string& section, const std::string& folded) {
    std::string kept;
    std::size_t done = 0;
    for (auto line = FindKey(section, folded); line; line = FindKey(section, folded, line->End)) {
        kept.append(section, done, line->Begin - done);
        done = line->End;
    }
    section = kept.append(section, done);
}

void PutKey(std::string& section, std::string_view key, std::string_view value, std::string_view lineEnd) {
    if (const auto line = FindKey(section, Folded(key))) {
        // The name stays as its author wrote it.
        std::string text(line->Name);
        section.replace(line->Begin, line->Text.size(), text.append("=").append(value));
        return;
    }
    std::size_t end = section.size();
    while (IsLineBreak(section[end - 1]) || kBlanks.find(section[end - 1]) != std::string_view::npos) --end;
    end = LineAt(section, end).End;
    std::string added(IsLineBreak(section[end - 1]) ? std::string_view() : lineEnd);
    section.insert(end, added.append(key).append("=").append(value).append(lineEnd));
}

}  // namespace

ProfileText::ProfileText(std::string_view bytes) : marked_(bytes.starts_with(kByteOrderMark)) {
    if (marked_) bytes.remove_prefix(kByteOrderMark.size());
    text_ = ToUtf8(bytes);
    utf8_ = text_ == bytes;
    lineEnd_ = LineEndOf(text_);
    headers_ = IndexOf(text_, kNextHeader);
}

ProfileText::NamedLine ProfileText::Named(const std::string& folded, std::size_t begin) {
    return {static_cast<std::uint32_t>(std::hash<std::string>{}(folded)), static_cast<std::uint32_t>(begin)};
}

template <class Next>
ProfileText::Index ProfileText::IndexOf(std::string_view text, Next next) {
    Index index;
    for (auto line = next(text, 0); line; line = next(text, line->End)) {
        index.push_back(Named(Folded(line->Name), line->Begin));
    }
    std::ranges::sort(index);
    return index;
}

// The first line of that name; null if there is none.
template <class Next>
auto ProfileText::FindIn(const Index& index, std::string_view text, Next next, const std::string& folded) {
    const NamedLine wanted = Named(folded, 0);
    auto found = decltype(next(text, 0)){};
    for (auto entry = std::ranges::lower_bound(index, wanted);
         entry != index.end() && entry->Hash == wanted.Hash; ++entry) {
        found = next(text, entry->Begin);
        if (found && Folded(found->Name) == folded) return found;
    }
    return decltype(found){};
}

// The first section of that name, opened; the end of opened_ if there is none.
ProfileText::Sections::iterator ProfileText::Find(const std::string& section) {
    if (lastName_ == section) return last_;
    lastName_ = section;
    const std::string name = Folded(section);
    const auto header = FindIn(headers_, text_, kNextHeader, name);
    const auto added = added_.find(name);
    if (added != added_.end() && (!header || added->second->first < header->Begin)) {
        return last_ = added->second;
    }
    if (!header) return last_ = opened_.end();

    const std::size_t place = header->Begin;
    last_ = opened_.lower_bound(place);
    if (last_ == opened_.end() || last_->first != place) {
        const std::size_t end = SectionEnd(text_, place);
        last_ = opened_.emplace(place, Section{text_.substr(place, end - place), end, 0, {}});
    }
    return last_;
}

// Makes sections of the headers in a section's further lines.
void ProfileText::Split(Sections::iterator section) {
    auto& [text, end, order, keys] = section->second;
    std::vector<Line> headers;
    for (auto line = kNextHeader(text, FirstLine(text).size()); line; line = kNextHeader(text, line->End)) {
        headers.push_back(*line);
    }
    for (auto header = headers.rbegin(); header != headers.rend(); ++header) {
        const std::string name = Folded(header->Name);
        const auto made = opened_.emplace_hint(std::next(section), section->first,
                                               Section{text.substr(header->Begin), end, order + 1, {}});
        text.resize(header->Begin);
        auto& first = added_.try_emplace(name, made).first->second;
        const bool isBehind =
            first->first > section->first || (first->first == section->first && first->second.Order > order);
        if (isBehind) first = made;
    }
    text.shrink_to_fit();
    for (auto next = std::next(section); next != opened_.end() && next->first == section->first; ++next) {
        next->second.Order = std::prev(next)->second.Order + 1;
    }
}

std::string ProfileText::Joined() const {
    std::string joined;
    std::size_t done = 0;
    for (const auto& [place, section] : opened_) {
        if (place > done) joined.append(text_, done, place - done);
        joined += section.Text;
        done = section.End;
    }
    return joined.append(text_, done);
}

std::string ProfileText::Value(std::string_view section, std::string_view key) {
    const auto found = Find(ToUtf8(Trimmed(section)));
    if (found == opened_.end()) return {};
    auto& [text, end, order, keys] = found->second;
    if (!keys) keys = IndexOf(text, kNextKey);
    const auto line = FindIn(*keys, text, kNextKey, Folded(ToUtf8(Trimmed(key))));
    return line ? std::string(ValueOf(line->Text)) : std::string();
}

bool ProfileText::SetValue(std::string_view section, std::string_view key,
                           std::optional<std::string_view> value) {
    const std::string sectionName = ToUtf8(Trimmed(section));
    const std::string keyName = ToUtf8(Trimmed(key));
    // What does not read back as it was written would be a name that nobody could ask for.
    if (SectionName(FirstLine("[" + sectionName + "]")) != sectionName) return false;
    if (KeyName(FirstLine(keyName + "=")) != keyName) return false;

    auto found = Find(sectionName);
    if (found == opened_.end()) {
        if (!value) return true;
        const auto last = opened_.empty() ? opened_.end() : std::prev(opened_.end());
        const bool isOpen = last != opened_.end() && last->second.End == text_.size();
        // It begins a line.
        std::string& before = isOpen ? last->second.Text : text_;
        if (!before.empty() && !IsLineBreak(before.back())) before += lineEnd_;
        const std::size_t end = text_.size();
        const std::size_t order = isOpen ? last->second.Order + 1 : 0;
        found = opened_.emplace(end, Section{"[" + sectionName + "]" + lineEnd_, end, order, {}});
        added_.emplace(Folded(sectionName), found);
        last_ = found;
    }
    std::string& text = found->second.Text;
    found->second.Keys.reset();
    if (!value) {
        RemoveKey(text, Folded(keyName));
        return true;
    }
    PutKey(text, keyName, ToUtf8(*value), lineEnd_);
    if (FirstLine(*value).size() < value->size()) Split(found);
    return true;
}

std::string ProfileText::Bytes() const {
    std::string text = Joined();
    if (!utf8_) {
        std::string bytes = ToWindows1252(text);
        if (ToUtf8(bytes) == text) text = std::move(bytes);
    }
    if (marked_) text.insert(0, kByteOrderMark);
    return text;
}

}  // namespace platform
