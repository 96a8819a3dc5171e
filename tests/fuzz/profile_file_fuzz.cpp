// Any bytes in a real file, any names and values: a pass writes what single calls write, nothing else appears
// in the folder, and no name of the user's folder leads out of it.

#include <filesystem>
#include <fstream>
#include <iterator>

#include "alignment/modIni.h"
#include "fuzz/fuzz_input.h"
#include "platform/places.h"

namespace {

namespace fs = std::filesystem;

struct TestFolder {
    fs::path Path = "/dev/shm";

    TestFolder() {
        std::string name = Path / "profile-fuzz-XXXXXX";
        Require(mkdtemp(name.data()) != nullptr, "a folder to test in");
        Path = name;
        platform::SetPlaces({Path, {}, {}});
    }
    ~TestFolder() { fs::remove_all(Path); }

    std::string TextOf(const char* file) const {
        std::ifstream stream(Path / file, std::ios::binary);
        return UnmarkedUtf8(std::string(std::istreambuf_iterator<char>(stream), {}));
    }
};

void RequireInside(const std::string& name) {
    if (name.starts_with('/') || name.starts_with("~/")) return;
    const fs::path path = platform::PathOfName(name, platform::CurrentPlaces());
    Require(path.empty() || !platform::PathInUserData(path, platform::CurrentPlaces()).empty(),
            "names stay inside");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TestFolder folder;
    const FuzzedFile input(data, size);
    for (const char* name : {"single.ini", "pass.ini"})
        std::ofstream(folder.Path / name, std::ios::binary) << input.Bytes;
    {
        orvane::IniWritePass pass("pass.ini");
        for (const auto& [section, key, value] : input.Writes) {
            RequireInside(value.value_or(section + key));
            orvane::IniWrite(section, key, value, "c:\\single.ini");
            orvane::IniWrite(section, key, value, "c:\\pass.ini");
            const std::string read = orvane::IniRead(section, key, "pass.ini");
            Require(input.HasLoneCr() || read == orvane::IniRead(section, key, "single.ini"),
                    "both read the same");
        }
        pass.Commit();
    }
    Require(input.HasLoneCr() || folder.TextOf("single.ini") == folder.TextOf("pass.ini"),
            "a pass writes what calls write");
    Require(std::distance(fs::directory_iterator(folder.Path), {}) == 2, "no other file appears");
    return 0;
}
