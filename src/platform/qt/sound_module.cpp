#include <SDL.h>
#include <dlfcn.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/sound_requests.h"

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

// NOLINTNEXTLINE(cert-dcl50-cpp): that is how the library calls it
void Ignore(const char*, int, const char*, int, const char*, ...) {}

// ALSA tells the terminal about a missing device at every try.
void SilenceAlsa() {
    using Handler = void (*)(const char*, int, const char*, int, const char*, ...);
    void* library = dlopen("libasound.so.2", RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr) return;
    if (void* setter = dlsym(library, "snd_lib_error_set_handler"))
        reinterpret_cast<int (*)(Handler)>(setter)(&Ignore);
}

struct Wave {
    SDL_AudioSpec Format{};
    std::unique_ptr<Uint8, decltype(&SDL_FreeWAV)> Samples{nullptr, SDL_FreeWAV};
    Uint32 Size = 0;
};

std::optional<Wave> LoadWave(const std::filesystem::path& file) {
    Wave wave;
    Uint8* samples = nullptr;
    if (SDL_LoadWAV(file.c_str(), &wave.Format, &samples, &wave.Size) == nullptr) return {};
    wave.Samples.reset(samples);
    return wave;
}

// The sound device, open only while there is something to hear.
class Device {
 public:
    // Replaces what is playing. Without a device that works, nothing happens.
    void Play(const Wave& wave) {
        if (id_ != 0 && !SameFormat(wave.Format)) Close();
        if (id_ == 0 && !Open(wave.Format)) return Close();
        SDL_ClearQueuedAudio(id_);
        if (SDL_QueueAudio(id_, wave.Samples.get(), wave.Size) != 0) return Close();
        const double frame = SDL_AUDIO_BITSIZE(format_.format) / 8.0 * format_.channels;
        end_ = Clock::now() + Seconds(wave.Size / frame / format_.freq);
        drained_ = false;
        looks_ = 0;
    }

    bool IsOpen() const { return id_ != 0; }
    // When it is worth looking at the device again.
    Clock::time_point End() const { return end_; }

    // Closes the device once it has played all; on a slow one that takes longer than the sound should.
    // A device that has stopped taking samples is given up.
    void CloseIfDone() {
        constexpr int kMostLooks = 50;
        const auto buffer = Seconds(static_cast<double>(format_.samples) / format_.freq);
        const bool empty = SDL_GetQueuedAudioSize(id_) == 0;
        if ((drained_ && empty) || ++looks_ > kMostLooks) return Close();
        drained_ = empty;
        end_ = Clock::now() + 3 * buffer;
    }

    void Close() {
        if (id_ != 0) SDL_CloseAudioDevice(id_);
        id_ = 0;
        drained_ = false;
        looks_ = 0;
        // The library's own watch for new devices would go on waking the process.
        SDL_Quit();
    }

 private:
    static Clock::duration Seconds(double seconds) {
        return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    }

    bool SameFormat(const SDL_AudioSpec& other) const {
        return format_.freq == other.freq && format_.format == other.format &&
               format_.channels == other.channels;
    }

    bool Open(SDL_AudioSpec wanted) {
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Orvane Utilities");
        if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return false;
        wanted.samples = 1024;
        wanted.callback = nullptr;
        id_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &format_, 0);
        if (id_ == 0) return false;
        SDL_PauseAudioDevice(id_, 0);
        return true;
    }

    SDL_AudioDeviceID id_ = 0;
    SDL_AudioSpec format_{};
    Clock::time_point end_{};
    bool drained_ = false;
    int looks_ = 0;  // since the sound should have been over
};

}  // namespace
}  // namespace platform

// Never returns.
extern "C" void OrvaneServeSounds(platform::SoundRequests& requests) {
    platform::SilenceAlsa();
    platform::Device device;
    for (;;) {
        std::vector<std::filesystem::path> wanted;
        {
            std::unique_lock lock(requests.Lock);
            const auto arrived = [&] { return !requests.Wanted.empty(); };
            if (device.IsOpen()) {
                requests.Arrived.wait_until(lock, device.End(), arrived);
            } else {
                requests.Arrived.wait(lock, arrived);
            }
            wanted.swap(requests.Wanted);
        }
        // Opening a device is work; the text that the same press brings goes first.
        if (!device.IsOpen()) std::this_thread::sleep_for(std::chrono::milliseconds(8));
        if (wanted.empty()) {
            device.CloseIfDone();
        } else if (const auto wave = platform::LoadWave(platform::SoundFile(wanted))) {
            device.Play(*wave);
        }
    }
}
