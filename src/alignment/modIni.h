#pragma once

// The one way to the values of profile files. A file name is taken as a user types it, see
// platform::PathOfName. A file of the user's folder that does not exist yet, or cannot be told to, counts as
// the one of the same name that came with the program; a write then makes the user's own.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "frame/mdlDeclars.h"
#include "platform/profile.h"

namespace orvane {

// The value of a key in a section of a profile file, names compared without regard to case: at most 254
// characters, without the blanks around it and without one enclosing pair of quotation marks. The empty text
// if file, section or key is missing.
std::string IniRead(std::string_view Section, std::string_view Key, std::string_view FileName);

// Stores a value under a key of a section; an absent value removes the key. Always gives kTrue: a write that
// cannot be done changes nothing and says nothing.
Truth IniWrite(std::string_view Section, std::string_view Key, std::optional<std::string_view> Value,
               std::string_view FileName);

class IniPass;

// As long as it lives, every IniRead of this file sees the file as it was when the pass began, but for what
// the program itself writes, and is found without going through the file again. Passes on other files, and a
// write pass on this one, may begin and end meanwhile.
class IniReadPass {
 public:
    explicit IniReadPass(std::string_view FileName);
    ~IniReadPass();
    IniReadPass(const IniReadPass&) = delete;
    IniReadPass& operator=(const IniReadPass&) = delete;

    // What there was to read when the pass began.
    platform::ProfileState State() const { return state_; }

 private:
    std::unique_ptr<IniPass> pass_;  // empty within another pass on the file, which then answers
    platform::ProfileState state_ = platform::ProfileState::Missing;
};

// As long as it lives, every IniWrite to this file is only collected, and every IniRead of it sees what was
// written. Commit writes all of it at once, or nothing if that cannot be done, and ends the pass. Without
// Commit nothing was written. In a pass within a write pass on the same file, Commit hands the writes to that
// one.
class IniWritePass {
 public:
    explicit IniWritePass(std::string_view FileName);
    ~IniWritePass();
    IniWritePass(const IniWritePass&) = delete;
    IniWritePass& operator=(const IniWritePass&) = delete;

    void Commit();

 private:
    std::unique_ptr<IniPass> pass_;
};

}  // namespace orvane
