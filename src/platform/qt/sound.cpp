#include "platform/sound.h"

#include <dlfcn.h>

#include <QCoreApplication>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/places.h"
#include "platform/qt/sound_requests.h"

namespace platform {
namespace {

std::function<void(std::string_view)>& Replacement() {
    static std::function<void(std::string_view)> player;
    return player;
}

SoundRequests& StartedPlayer() {
    static SoundRequests& requests = [module = QCoreApplication::applicationDirPath().toStdString() + "/" +
                                               kSoundPlayerModule]() -> SoundRequests& {
        auto* made = new SoundRequests;  // the thread may outlive everything but the process
        const auto run = [made, module] {
            void* library = dlopen(module.c_str(), RTLD_LAZY | RTLD_LOCAL);
            if (library == nullptr) return;
            if (void* body = dlsym(library, kSoundPlayerSymbol))
                reinterpret_cast<SoundPlayerBody>(body)(*made);
        };
        try {
            std::thread(run).detach();
        } catch (const std::system_error&) {
            // The desktop grants no further thread: nobody will hear what is asked for.
        }
        return *made;
    }();
    return requests;
}

}  // namespace

void PlaySoundFile(std::string_view fileName) {
    if (Replacement()) return Replacement()(fileName);
    SoundRequests& requests = StartedPlayer();
    std::vector<std::string> places{std::string(fileName),
                                    (CurrentPlaces().Program / "sounds" / fileName).string()};
    {
        const std::lock_guard guard(requests.Lock);
        requests.Wanted = std::move(places);
    }
    requests.Arrived.notify_one();
}

void SetSoundPlayer(std::function<void(std::string_view)> player) { Replacement() = std::move(player); }

}  // namespace platform
