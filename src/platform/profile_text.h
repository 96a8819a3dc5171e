#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
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
    explicit ProfileText(std::string_view bytes);
    ProfileText(const ProfileText&) = delete;
    ProfileText& operator=(const ProfileText&) = delete;

    // The value of a key: one line without the blanks (space, tab) around it and one enclosing pair of ' or
    // ", up to the first NUL, at most kLongestProfileValue characters. Empty if section or key is missing.
    std::string Value(std::string_view section, std::string_view key);

    // Puts a value, exactly as it stands, in place of the old one or behind the section's last line that is
    // not blank; a new section goes to the end. An absent value removes the key. Further lines of a value are
    // lines like any other. False, and nothing changed, for names that no line could hold: an empty key, "="
    // or a leading "[" or ";" in one, "]" in a section, a line break in either.
    bool SetValue(std::string_view section, std::string_view key, std::optional<std::string_view> value);

    // The file's new contents. The encoding is the old one as long as it holds every character and would be
    // taken for itself when read; otherwise the file becomes UTF-8.
    std::string Bytes() const;

 private:
    // Where a line with a name begins; 32 bits reach far beyond the largest file. Sorted, so that a search
    // takes the logarithm of their number and no file, whatever its names, makes the sorting quadratic; of
    // equal names the first in the text comes first.
    struct NamedLine {
        std::uint32_t Hash = 0;
        std::uint32_t Begin = 0;
        auto operator<=>(const NamedLine&) const = default;  // NOLINT(modernize-use-nullptr)
    };
    using Index = std::vector<NamedLine>;

    // A section that was asked for, taken out of the text.
    struct Section {
        std::string Text;       // its header and all lines to the next one
        std::size_t End = 0;    // of what stands in text_ in its place
        std::size_t Order = 0;  // rises among those at the same place
        std::optional<Index> Keys;
    };
    // By the place in text_. At the same place stand, in their order, a section and those that came to light
    // behind it in values; at the end stand the new ones.
    using Sections = std::multimap<std::size_t, Section>;

    static NamedLine Named(const std::string& folded, std::size_t begin);
    template <class Next>
    static Index IndexOf(std::string_view text, Next next);
    template <class Next>
    static auto FindIn(const Index& index, std::string_view text, Next next, const std::string& folded);
    Sections::iterator Find(const std::string& section);
    void Split(Sections::iterator section);
    std::string Joined() const;

    bool marked_ = false;  // by a byte-order mark
    bool utf8_ = true;
    std::string lineEnd_;
    std::string text_;  // of the file, in UTF-8, without the mark
    Index headers_;
    Sections opened_;
    std::map<std::string, Sections::iterator> added_;  // the first of a name that is not in text_, folded
    std::optional<std::string> lastName_;              // callers ask for the keys of a section in one go
    Sections::iterator last_;
};

}  // namespace platform
