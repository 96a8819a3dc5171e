#pragma once

#include <functional>
#include <vector>

namespace platform {

// One value of the process-wide random source: uniform, single precision, at least 0 and always below 1.
// Every run of the program begins with the same sequence.
float NextRandom();

// Starts the sequence anew from the system clock. Without effect on a source that a test has put in.
void ReseedRandomFromClock();

// Puts another source in place of the program's own; an empty function brings that back, in its first state.
void SetRandomSource(std::function<float()> source);

// For tests: gives the listed values in turn as long as it lives, then 0. Count() tells how many were drawn.
class ScriptedRandom {
 public:
    explicit ScriptedRandom(std::vector<float> values);
    ~ScriptedRandom();
    ScriptedRandom(const ScriptedRandom&) = delete;
    ScriptedRandom& operator=(const ScriptedRandom&) = delete;

    int Count() const { return count_; }

 private:
    std::vector<float> values_;
    int count_ = 0;
};

}  // namespace platform
