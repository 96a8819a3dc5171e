#include "platform/sound.h"

#include <windows.h>

#include <mmsystem.h>

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/places.h"
#include "platform/win32/toolkit.h"

namespace platform {
namespace {

std::function<void(std::string_view)>& Replacement() {
    static std::function<void(std::string_view)> player;
    return player;
}

// The sound that is wanted next. A newer wish replaces one that the player has not come to, so a player that
// hangs holds up nothing and piles up nothing.
struct Requests {
    std::mutex Lock;
    std::condition_variable Arrived;
    std::pair<std::filesystem::path, std::filesystem::path>
        Wanted;  // in the current folder, else there; empty: no wish
};

// The sound library is slow to load, so it comes into the process here and not at the program's start.
void Play(Requests& requests) {
    const HMODULE library = LoadLibraryExW(L"winmm.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) return;
    const auto play = reinterpret_cast<decltype(&PlaySoundW)>(
        reinterpret_cast<void*>(GetProcAddress(library, "PlaySoundW")));
    for (std::unique_lock guard(requests.Lock); play != nullptr; guard.lock()) {
        requests.Arrived.wait(guard, [&] { return !requests.Wanted.first.empty(); });
        const auto [here, beside] = std::exchange(requests.Wanted, {});
        guard.unlock();
        std::error_code error;
        const auto& file = std::filesystem::exists(here, error) ? here : beside;
        play(file.c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
    }
}

Requests& StartedPlayer() {
    static Requests& requests = []() -> Requests& {
        auto* made = new Requests;  // the thread may outlive everything but the process
        std::thread([made] { Play(*made); }).detach();
        return *made;
    }();
    return requests;
}

}  // namespace

void PlaySoundFile(std::string_view fileName) {
    if (Replacement()) return Replacement()(fileName);
    Requests& requests = StartedPlayer();
    const std::filesystem::path name = ToWide(fileName);
    {
        const std::lock_guard guard(requests.Lock);
        requests.Wanted = {name, CurrentPlaces().Program / "sounds" / name};
    }
    requests.Arrived.notify_one();
}

void SetSoundPlayer(std::function<void(std::string_view)> player) { Replacement() = std::move(player); }

}  // namespace platform
