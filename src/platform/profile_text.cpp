#include "platform/profile_text.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "platform/profile_encoding.h"

namespace platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";

bool IsLineBreak(char c) { return c == '\n' || c == '\r'; }

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

struct Line {
    std::string_view Text;  // without its line end
    std::size_t End = 0;    // behind its line end
};

Line LineAt(std::string_view text, std::size_t begin) {
    std::size_t stop = begin;
    while (stop < text.size() && !IsLineBreak(text[stop])) ++stop;
    std::size_t end = std::min(stop + 1, text.size());
    if (end < text.size() && text[stop] == '\r' && text[end] == '\n') ++end;
    return {text.substr(begin, stop - begin), end};
}

std::string_view FirstLine(std::string_view text) { return LineAt(text, 0).Text; }

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

// Where the section that begins here ends: at the next header.
std::size_t SectionEnd(std::string_view text, std::size_t begin) {
    std::size_t end = LineAt(text, begin).End;
    while (end < text.size()) {
        const Line line = LineAt(text, end);
        if (SectionName(line.Text)) break;
        end = line.End;
    }
    return end;
}

std::string WithoutKey(std::string_view text, std::string_view foldedKey) {
    std::string kept;
    for (std::size_t begin = 0; begin < text.size();) {
        const Line line = LineAt(text, begin);
        const auto name = KeyName(line.Text);
        if (!name || FoldedCase(*name) != foldedKey) kept += text.substr(begin, line.End - begin);
        begin = line.End;
    }
    return kept;
}

void PutKey(std::string& text, std::string_view key, std::string_view value, std::string_view lineEnd) {
    const std::string foldedKey = FoldedCase(key);
    std::size_t behindLastText = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const Line line = LineAt(text, begin);
        const auto name = KeyName(line.Text);
        if (name && FoldedCase(*name) == foldedKey) {
            // The name stays as its author wrote it.
            text.replace(begin, line.Text.size(), std::string(*name).append("=").append(value));
            return;
        }
        if (!Trimmed(line.Text).empty()) behindLastText = line.End;
        begin = line.End;
    }
    std::string added;
    if (!IsLineBreak(text[behindLastText - 1])) added = lineEnd;
    text.insert(behindLastText, added.append(key).append("=").append(value).append(lineEnd));
}

}  // namespace

ProfileText::ProfileText(std::string_view bytes) : marked_(bytes.starts_with(kByteOrderMark)) {
    if (marked_) bytes.remove_prefix(kByteOrderMark.size());
    utf8_ = IsUtf8(bytes);
    Parse(ToUtf8(bytes));
    lineEnd_ = LineEndOf(text_);
}

ProfileText::NamedLine ProfileText::Named(const std::string& foldedName, std::size_t begin) {
    return {static_cast<std::uint32_t>(std::hash<std::string>{}(foldedName)),
            static_cast<std::uint32_t>(begin)};
}

ProfileText::Index ProfileText::IndexOf(std::string_view text, NameOfLine nameOf) {
    Index index;
    for (std::size_t begin = 0; begin < text.size();) {
        const Line line = LineAt(text, begin);
        if (const auto name = nameOf(line.Text)) index.push_back(Named(FoldedCase(*name), begin));
        begin = line.End;
    }
    std::sort(index.begin(), index.end());
    return index;
}

std::optional<std::size_t> ProfileText::Find(std::string_view text, const Index& index, NameOfLine nameOf,
                                             const std::string& foldedName) {
    const NamedLine wanted = Named(foldedName, 0);
    for (auto line = std::lower_bound(index.begin(), index.end(), wanted);
         line != index.end() && line->Hash == wanted.Hash; ++line) {
        if (FoldedCase(*nameOf(LineAt(text, line->Begin).Text)) == foldedName) return line->Begin;
    }
    return {};
}

void ProfileText::Parse(std::string text) {
    text_ = std::move(text);
    opened_.clear();
    added_.clear();
    behind_.clear();
    last_ = nullptr;
    sections_ = IndexOf(text_, SectionName);
}

ProfileText::Section* ProfileText::FindSection(std::string_view name) {
    if (last_ != nullptr && lastName_ == name) return last_;
    const std::string foldedName = FoldedCase(name);
    if (behind_.contains(foldedName)) Parse(Joined());
    auto begin = Find(text_, sections_, SectionName, foldedName);
    if (const auto added = added_.find(foldedName); !begin && added != added_.end()) begin = added->second;
    if (!begin) return nullptr;
    lastName_ = name;
    return last_ = Open(*begin);
}

ProfileText::Section* ProfileText::Open(std::size_t begin) {
    const auto [entry, isNew] = opened_.try_emplace(begin);
    Section& section = entry->second;
    if (isNew) {
        section.Begin = begin;
        section.End = SectionEnd(text_, begin);
    }
    return &section;
}

std::string ProfileText::Joined() const {
    std::string joined;
    std::size_t done = 0;
    for (const auto& [begin, section] : opened_) {
        if (!section.Text) continue;
        joined.append(text_, done, begin - done).append(*section.Text).append(section.Behind);
        done = section.End;
    }
    return joined.append(text_, done);
}

std::string ProfileText::Value(std::string_view section, std::string_view key) {
    Section* found = FindSection(ToUtf8(Trimmed(section)));
    if (found == nullptr) return {};
    const std::string_view text =
        found->Text ? std::string_view(*found->Text)
                    : std::string_view(text_).substr(found->Begin, found->End - found->Begin);
    if (!found->Keys) found->Keys = IndexOf(text, KeyName);
    const auto line = Find(text, *found->Keys, KeyName, FoldedCase(ToUtf8(Trimmed(key))));
    return line ? std::string(ValueOf(LineAt(text, *line).Text)) : std::string();
}

void ProfileText::SplitOff(Section& section) {
    const std::size_t end = SectionEnd(*section.Text, 0);
    const std::string behind = section.Text->substr(end);
    for (std::size_t begin = 0; begin < behind.size();) {
        const Line line = LineAt(behind, begin);
        if (const auto name = SectionName(line.Text)) behind_.insert(FoldedCase(*name));
        begin = line.End;
    }
    section.Text->resize(end);
    section.Behind.insert(0, behind);
}

ProfileText::Section* ProfileText::AddSection(std::string_view name) {
    if (!text_.empty() && !IsLineBreak(text_.back())) {
        std::string joined = Joined();
        if (!IsLineBreak(joined.back())) joined += lineEnd_;
        Parse(std::move(joined));
    }
    const std::size_t begin = text_.size();
    text_.append("[").append(name).append("]").append(lineEnd_);
    added_.emplace(FoldedCase(name), begin);
    return Open(begin);
}

bool ProfileText::SetValue(std::string_view section, std::string_view key,
                           std::optional<std::string_view> value) {
    const std::string sectionName = ToUtf8(Trimmed(section));
    const std::string keyName = ToUtf8(Trimmed(key));
    // What does not read back as it was written would be a name that nobody could ask for.
    if (SectionName(FirstLine("[" + sectionName + "]")) != sectionName) return false;
    if (KeyName(FirstLine(keyName + "=")) != keyName) return false;

    Section* found = FindSection(sectionName);
    if (found == nullptr) {
        if (!value) return true;
        found = AddSection(sectionName);
    }
    lastName_ = sectionName;
    last_ = found;
    if (!found->Text) found->Text = text_.substr(found->Begin, found->End - found->Begin);
    found->Keys.reset();
    if (!value) {
        // All lines of the key: of equal ones left over the next would come to light.
        found->Text = WithoutKey(*found->Text, FoldedCase(keyName));
        return true;
    }
    const std::string text = ToUtf8(*value);
    PutKey(*found->Text, keyName, text, lineEnd_);
    // Further lines of a value are lines like any other, so a header among them opens a section. That changes
    // nothing for the others but those of its name, so nothing is read anew until somebody asks for one.
    if (SectionEnd(text, 0) < text.size()) SplitOff(*found);
    return true;
}

std::string ProfileText::Bytes() const {
    std::string text = Joined();
    if (!utf8_) {
        auto bytes = ToWindows1252(text);
        if (bytes && !IsUtf8(*bytes)) text = std::move(*bytes);
    }
    if (marked_) text.insert(0, kByteOrderMark);
    return text;
}

}  // namespace platform
