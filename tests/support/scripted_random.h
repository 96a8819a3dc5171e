#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/random.h"

// In place of the random source, as long as it lives: gives the listed values in turn, then 0.
class ScriptedRandom {
 public:
    explicit ScriptedRandom(std::vector<float> values) : values_(std::move(values)) {
        platform::SetRandomSource([this] {
            const auto index = static_cast<std::size_t>(count_++);
            return index < values_.size() ? values_[index] : 0.0F;
        });
    }
    ~ScriptedRandom() { platform::SetRandomSource({}); }
    ScriptedRandom(const ScriptedRandom&) = delete;
    ScriptedRandom& operator=(const ScriptedRandom&) = delete;

    // How many values were drawn.
    int Count() const { return count_; }

 private:
    std::vector<float> values_;
    int count_ = 0;
};
