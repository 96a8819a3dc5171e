#include <dlfcn.h>

#include "platform/places.h"
#include "platform/sound_requests.h"

namespace platform {

// The sound library comes into the process here, in a module, and not at the program's start.
void ServeSounds(SoundRequests& requests) {
    const auto module = CurrentPlaces().Program / "liborvane-sound.so";
    void* library = dlopen(module.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* serve = library == nullptr ? nullptr : dlsym(library, "OrvaneServeSounds");
    if (serve != nullptr) reinterpret_cast<decltype(&ServeSounds)>(serve)(requests);
}

}  // namespace platform
