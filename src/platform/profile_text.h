#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// In characters, that is code points.
inline constexpr std::size_t kLongestProfileValue = 254;

// The text of a profile file: sections "[Name]" of keys "Key=Value", names compared without regard to case;
// of equal sections, and of equal keys in a section, the first counts. A line ends with CR LF, LF or CR. All
// other text belongs to nobody and stays where it is, byte by byte.
//
// Names and values come and go in UTF-8; what a caller gives in anything else counts as Windows-1252, and so
// does a file. A byte-order mark at the start is kept and belongs to no line.
class ProfileText {
 public:
    explicit ProfileText(std::string_view bytes = {});
    ProfileText(ProfileText&&) = default;
    ProfileText& operator=(ProfileText&&) = default;

    // The value of a key: one line without the blanks (space, tab) around it and one enclosing pair of ' or
    // ", up to the first NUL, at most kLongestProfileValue characters. Empty if section or key is missing.
    std::string Value(std::string_view section, std::string_view key);

    // Puts a value, exactly as it stands, in place of the old one or behind the section's last line that is
    // not blank; a new section goes to the end. An absent value removes the key. False, and nothing changed,
    // for names that no line could hold: an empty key, "=" or a leading "[" or ";" in one, "]" in a section,
    // a line break in either.
    bool SetValue(std::string_view section, std::string_view key, std::optional<std::string_view> value);

    // The file's new contents. The encoding is the old one as long as it holds every character and would be
    // taken for itself when read; otherwise the file becomes UTF-8.
    std::string Bytes() const;

 private:
    // A line with a name; 32 bits reach far beyond the largest file. Sorted, so that a search takes the
    // logarithm of their number and no file, whatever its names, makes the sorting quadratic; of equal names
    // the first in the text comes first.
    struct NamedLine {
        std::uint32_t Hash = 0;
        std::uint32_t Begin = 0;
        auto operator<=>(const NamedLine&) const = default;  // NOLINT(modernize-use-nullptr)
    };
    using Index = std::vector<NamedLine>;
    using NameOfLine = std::optional<std::string_view> (*)(std::string_view line);

    // A section that was asked for.
    struct Section {
        std::size_t Begin = 0;
        std::size_t End = 0;                // where it lies in text_
        std::optional<std::string> Text{};  // in place of what text_ holds, header included
        std::string Behind{};               // more sections, that came to light when a value was set
        std::optional<Index> Keys{};
    };

    static NamedLine Named(const std::string& foldedName, std::size_t begin);
    static Index IndexOf(std::string_view text, NameOfLine nameOf);
    static std::optional<std::size_t> Find(std::string_view text, const Index& index, NameOfLine nameOf,
                                           const std::string& foldedName);

    void Parse(std::string text);
    Section* FindSection(std::string_view name);
    Section* AddSection(std::string_view name);
    Section* Open(std::size_t begin);
    void SplitOff(Section& section);
    std::string Joined() const;

    bool marked_ = false;  // by a byte-order mark
    bool utf8_ = true;
    std::string lineEnd_;
    std::string text_;  // in UTF-8, without the mark
    Index sections_;
    std::map<std::string, std::size_t> added_;  // sections that came later, by folded name
    std::map<std::size_t, Section> opened_;     // by their begin
    std::set<std::string> behind_;              // the folded names of sections that lie behind opened ones
    std::string lastName_;                      // callers ask for the keys of a section in one go
    Section* last_ = nullptr;
};

}  // namespace platform
