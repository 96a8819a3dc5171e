#include <windows.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/places.h"
#include "platform/win32/toolkit.h"

namespace platform {
namespace {

using Path = std::filesystem::path;

constexpr wchar_t kRootOfC[] = L"C:\\";

Path FolderOfVariable(const wchar_t* variable) {
    std::wstring value(GetEnvironmentVariableW(variable, nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(variable, value.data(), static_cast<DWORD>(value.size())));
    const Path folder = value;
    return folder.is_absolute() ? folder : Path();
}

Path ProgramFolder() {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (length < name.size()) {
            name.resize(length);
            return Path(name).parent_path();
        }
        name.resize(name.size() * 2);
    }
}

bool IsSame(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.c_str(), static_cast<int>(a.size()), b.c_str(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

// A device keeps its name with any extension, and with blanks behind it.
bool IsDevice(const std::wstring& name) {
    static constexpr std::array kDevices{
        L"con",  L"prn",       L"aux",       L"nul",       L"conin$",    L"conout$", L"com0",
        L"com1", L"com2",      L"com3",      L"com4",      L"com5",      L"com6",    L"com7",
        L"com8", L"com9",      L"com\u00B9", L"com\u00B2", L"com\u00B3", L"lpt0",    L"lpt1",
        L"lpt2", L"lpt3",      L"lpt4",      L"lpt5",      L"lpt6",      L"lpt7",    L"lpt8",
        L"lpt9", L"lpt\u00B9", L"lpt\u00B2", L"lpt\u00B3"};
    std::wstring stem = name.substr(0, name.find(L'.'));
    stem.erase(stem.find_last_not_of(L' ') + 1);
    return std::ranges::any_of(kDevices, [&](const wchar_t* device) { return IsSame(stem, device); });
}

// The steps of a name behind its drive or share, without those that lead nowhere; nothing if one of them
// cannot be a name of a file or folder here.
std::optional<std::vector<std::wstring>> StepsOf(std::wstring_view name) {
    std::vector<std::wstring> steps;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of(L"/\\"), name.size());
        std::wstring step(name.substr(0, end));
        name.remove_prefix(std::min(end + 1, name.size()));
        if (step == L"..") {
            if (!steps.empty()) steps.pop_back();  // nothing lies above the top
            continue;
        }
        // The system drops these at the end of a name.
        step.erase(step.find_last_not_of(L" .") + 1);
        if (step.empty()) continue;
        const bool odd = std::ranges::any_of(step, [](wchar_t c) {
            return c < L' ' || std::wstring_view(L"<>:\"|?*").find(c) != std::wstring_view::npos;
        });
        if (odd || IsDevice(step)) return std::nullopt;
        steps.push_back(std::move(step));
    }
    return steps;
}

// The steps that lead from a folder to what lies in it; none for what does not.
std::vector<Path> WayFrom(const Path& folder, const Path& file) {
    const Path from = folder.lexically_normal() / "", to = file.lexically_normal();
    auto step = to.begin();
    for (const Path& part : from) {
        if (part.empty()) break;
        if (step == to.end() || !IsSame(part.native(), step->native())) return {};
        ++step;
    }
    return {step, to.end()};
}

}  // namespace

Places DesktopPlaces() {
    Places places;
    places.Home = FolderOfVariable(L"USERPROFILE");
    if (const Path data = FolderOfVariable(L"APPDATA"); !data.empty()) places.UserData = data / "Orvane";
    places.Program = ProgramFolder();
    return places;
}

Path PathOfName(std::string_view name, const Places& places) {
    std::wstring wide = ToWide(name);
    std::ranges::replace(wide, L'/', L'\\');
    const bool share = wide.starts_with(L"\\\\");
    // Without the slash it could be a stream as well.
    const bool drive = wide.find(L":\\") == 1 && IsCharAlphaW(wide[0]) != FALSE && wide[0] < 0x80;
    if (wide.empty() || wide.back() == L'\\') return {};
    const auto steps = StepsOf(drive ? std::wstring_view(wide).substr(2) : wide);
    if (!steps || steps->empty()) return {};

    Path path;
    std::size_t first = 0;
    if (share) {
        // A server and one of its folders, and what lies there.
        if (steps->size() < 3) return {};
        path = L"\\\\" + (*steps)[0] + L"\\" + (*steps)[1] + L"\\";
        first = 2;
    } else if (drive && (steps->size() > 1 || (wide[0] | 0x20) != L'c')) {
        path = wide.substr(0, 2) + L"\\";
    } else if (places.UserData.empty()) {
        return {};
    } else {
        path = places.UserData;
    }
    for (std::size_t i = first; i < steps->size(); ++i) path /= (*steps)[i];
    return path;
}

Path PathInUserData(const Path& file, const Places& places) {
    Path way;
    if (places.UserData.empty()) return way;
    for (const Path& step : WayFrom(places.UserData, file)) way /= step;
    return way;
}

Path ShippedFile(const Path& file, const Places& places) {
    const Path way = PathInUserData(file, places);
    if (way.empty()) return {};
    if (Path inRoot = kRootOfC / way;
        !way.has_parent_path() && (GetFileAttributesW(inRoot.c_str()) & FILE_ATTRIBUTE_DIRECTORY) == 0)
        return inRoot;  // a name without attributes counts as a folder there
    return places.Program.empty() ? Path() : places.Program / way;
}

}  // namespace platform
