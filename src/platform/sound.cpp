#include "platform/sound.h"

#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/places.h"
#include "platform/sound_requests.h"

namespace platform {
namespace {

std::function<void(std::string_view)>& Replacement() {
    static std::function<void(std::string_view)> player;
    return player;
}

SoundRequests& StartedPlayer() {
    static SoundRequests& requests = []() -> SoundRequests& {
        auto* made = new SoundRequests;  // the thread may outlive everything but the process
        try {
            std::thread(ServeSounds, std::ref(*made)).detach();
        } catch (const std::system_error&) {
            return *made;  // the desktop grants no further thread: nobody will hear what is asked for
        }
        return *made;
    }();
    return requests;
}

}  // namespace

void PlaySoundFile(std::string_view fileName) {
    if (Replacement()) return Replacement()(fileName);
    const std::filesystem::path name = PathOfUtf8(fileName);
    std::vector<std::filesystem::path> places{name, CurrentPlaces().Program / "sounds" / name};
    SoundRequests& requests = StartedPlayer();
    {
        const std::lock_guard guard(requests.Lock);
        requests.Wanted = std::move(places);
    }
    requests.Arrived.notify_one();
}

void SetSoundPlayer(std::function<void(std::string_view)> player) { Replacement() = std::move(player); }

}  // namespace platform
