#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/sound.h"

// Listens in place of the sound player, as long as it lives.
class Listener {
 public:
    Listener() {
        platform::SetSoundPlayer([this](std::string_view name) { heard_.emplace_back(name); });
    }
    ~Listener() { platform::SetSoundPlayer({}); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    // What was heard since the last call.
    std::vector<std::string> Heard() { return std::exchange(heard_, {}); }

 private:
    std::vector<std::string> heard_;
};
