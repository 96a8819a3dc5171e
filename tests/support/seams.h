#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/random.h"
#include "platform/sound.h"

// In place of the random source, as long as it lives: gives the listed values in turn, then 0.
class ScriptedRandom {
 public:
    explicit ScriptedRandom(const std::vector<float>& values) {
        platform::SetRandomSource([this, values] {
            const auto index = static_cast<std::size_t>(count_++);
            if (index > values.size() + 9) throw std::runtime_error("more draws than the test lists");
            return index < values.size() ? values[index] : 0.0F;
        });
    }
    ~ScriptedRandom() { platform::SetRandomSource({}); }

    // How many values were drawn.
    int Count() const { return count_; }

 private:
    int count_ = 0;
};

// Listens in place of the sound player, as long as it lives.
class Listener {
 public:
    Listener() {
        platform::SetSoundPlayer([this](std::string_view name) { heard_.emplace_back(name); });
    }
    ~Listener() { platform::SetSoundPlayer({}); }

    // What was heard since the last call.
    std::vector<std::string> Heard() { return std::exchange(heard_, {}); }

 private:
    std::vector<std::string> heard_;
};
