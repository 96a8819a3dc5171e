#include "alignment/modIni.h"

#include <utility>

#include "platform/places.h"

namespace orvane {

using State = platform::ProfileState;

IniFile::IniFile(std::filesystem::path File) : file_(std::move(File)), text_(Load()) {}

std::string IniFile::Load() {
    platform::ProfileFile read = platform::ReadProfileFile(file_);
    replaceable_ = read.State == State::Missing || read.State == State::Readable;
    if (read.State == State::Missing || read.State == State::Untold) {
        read = platform::ReadProfileFile(platform::ShippedFile(file_));
    }
    state_ = read.State;
    return std::move(read.Bytes);
}

std::string IniFile::Read(std::string_view Section, std::string_view Key) {
    return text_.Value(Section, Key);
}

void IniFile::Write(std::string_view Section, std::string_view Key, std::optional<std::string_view> Value) {
    if (text_.SetValue(Section, Key, Value)) changed_ = true;
}

void IniFile::Save() {
    if (changed_ && replaceable_) platform::ReplaceProfileFile(file_, text_.Bytes());
}

std::string IniRead(std::string_view Section, std::string_view Key, std::string_view FileName) {
    return IniFile(platform::PathOfName(FileName)).Read(Section, Key);
}

Truth IniWrite(std::string_view Section, std::string_view Key, std::optional<std::string_view> Value,
               std::string_view FileName) {
    IniFile file(platform::PathOfName(FileName));
    file.Write(Section, Key, Value);
    file.Save();
    return kTrue;
}

}  // namespace orvane
