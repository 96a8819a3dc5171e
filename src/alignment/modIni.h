#pragma once

// The one way to the values of profile files. A file name is taken as a user types it, see
// platform::PathOfName. A file of the user's folder that does not exist yet, or cannot be told to, counts as
// the one of the same name that came with the program; a write then makes the user's own.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "frame/mdlDeclars.h"
#include "platform/profile.h"
#include "platform/profile_text.h"

namespace orvane {

// A profile file as it was when the object was made, with what was written to the object since.
class IniFile {
 public:
    explicit IniFile(std::filesystem::path File);

    // What there was to read.
    platform::ProfileState State() const { return state_; }

    // The value of a key in a section, names compared without regard to case: at most 254 characters, without
    // the blanks around it and without one enclosing pair of quotation marks. The empty text if file, section
    // or key is missing.
    std::string Read(std::string_view Section, std::string_view Key);

    // Stores a value under a key of a section; an absent value removes the key.
    void Write(std::string_view Section, std::string_view Key, std::optional<std::string_view> Value);

    // Puts all that was written into the file at once. If that cannot be done nothing changes, and nothing is
    // said. Without it the file stays as it was.
    void Save();

 private:
    std::string Load();

    std::filesystem::path file_;
    platform::ProfileState state_ = platform::ProfileState::Missing;
    bool replaceable_ = false;
    bool changed_ = false;
    platform::ProfileText text_;
};

// One value, read from the file or written to it. IniWrite always gives kTrue.
std::string IniRead(std::string_view Section, std::string_view Key, std::string_view FileName);
Truth IniWrite(std::string_view Section, std::string_view Key, std::optional<std::string_view> Value,
               std::string_view FileName);

}  // namespace orvane
