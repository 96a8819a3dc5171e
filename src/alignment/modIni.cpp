#include "alignment/modIni.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "platform/places.h"
#include "platform/profile.h"
#include "platform/profile_text.h"

namespace orvane {
namespace {

enum class Purpose { Read, Write };

std::vector<IniPass*>& Passes() {
    static std::vector<IniPass*> passes;
    return passes;
}

}  // namespace

// A file's text as one pass knows it.
class IniPass {
 public:
    IniPass(std::string_view name, Purpose purpose)
        : purpose_(purpose), name_(name), file_(platform::PathOfName(name, platform::CurrentPlaces())) {
        if (const IniPass* outer = Innermost(name, Purpose::Write)) {
            text_ = platform::ProfileText(outer->text_.Bytes());
            replaceable_ = outer->replaceable_;
            state_ = outer->state_;
        } else {
            Load();
        }
        Passes().push_back(this);
    }
    ~IniPass() { std::erase(Passes(), this); }
    IniPass(const IniPass&) = delete;
    IniPass& operator=(const IniPass&) = delete;

    // The pass that a call for this file belongs to, if there is one: a write needs a write pass.
    static IniPass* Innermost(std::string_view name, Purpose purpose) {
        std::optional<std::filesystem::path> file;
        for (auto pass = Passes().rbegin(); pass != Passes().rend(); ++pass) {
            if (purpose == Purpose::Write && (*pass)->purpose_ != Purpose::Write) continue;
            // Nearly always the name is the very same, and need not be made a path.
            if ((*pass)->name_ == name) return *pass;
            if (!file) file = platform::PathOfName(name, platform::CurrentPlaces());
            if ((*pass)->file_ == *file) return *pass;
        }
        return nullptr;
    }

    platform::ProfileText& Text() { return text_; }
    platform::ProfileState State() const { return state_; }

    void Set(std::string_view section, std::string_view key, std::optional<std::string_view> value) {
        if (text_.SetValue(section, key, value)) changed_ = true;
    }

    // Hands over what was set, to the pass around this one or to the file. The pass takes no more calls then.
    void Commit() {
        std::erase(Passes(), this);
        if (!changed_ || !replaceable_) return;
        if (IniPass* outer = Innermost(name_, Purpose::Write)) {
            outer->text_ = std::move(text_);
            outer->changed_ = true;
        } else if (platform::ReplaceProfileFile(file_, text_.Bytes())) {
            for (IniPass* pass : Passes()) {
                if (pass->file_ == file_) pass->Load();
            }
        }
    }

 private:
    void Load() {
        platform::ProfileFile read = platform::ReadProfileFile(file_);
        using State = platform::ProfileState;
        replaceable_ = read.State == State::Missing || read.State == State::Readable;
        if (read.State == State::Missing || read.State == State::Untold) {
            read = platform::ReadProfileFile(platform::ShippedFile(file_, platform::CurrentPlaces()));
        }
        state_ = read.State;
        text_ = platform::ProfileText(read.Bytes);
    }

    Purpose purpose_;
    std::string name_;
    std::filesystem::path file_;
    platform::ProfileText text_;
    bool replaceable_ = false;
    platform::ProfileState state_ = platform::ProfileState::Missing;
    bool changed_ = false;
};

std::string IniRead(std::string_view Section, std::string_view Key, std::string_view FileName) {
    if (IniPass* pass = IniPass::Innermost(FileName, Purpose::Read)) return pass->Text().Value(Section, Key);
    return IniPass(FileName, Purpose::Read).Text().Value(Section, Key);
}

Truth IniWrite(std::string_view Section, std::string_view Key, std::optional<std::string_view> Value,
               std::string_view FileName) {
    if (IniPass* pass = IniPass::Innermost(FileName, Purpose::Write)) {
        pass->Set(Section, Key, Value);
    } else {
        IniPass single(FileName, Purpose::Write);
        single.Set(Section, Key, Value);
        single.Commit();
    }
    return kTrue;
}

IniReadPass::IniReadPass(std::string_view FileName) {
    const IniPass* pass = IniPass::Innermost(FileName, Purpose::Read);
    if (pass == nullptr) {
        pass_ = std::make_unique<IniPass>(FileName, Purpose::Read);
        pass = pass_.get();
    }
    state_ = pass->State();
}

IniReadPass::~IniReadPass() = default;

IniWritePass::IniWritePass(std::string_view FileName)
    : pass_(std::make_unique<IniPass>(FileName, Purpose::Write)) {}

IniWritePass::~IniWritePass() = default;

void IniWritePass::Commit() {
    if (const auto pass = std::exchange(pass_, nullptr)) pass->Commit();
}

}  // namespace orvane
