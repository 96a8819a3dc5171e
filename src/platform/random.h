#pragma once

#include <functional>

namespace platform {

// One value of the process-wide random source: uniform, single precision, at least 0 and always below 1.
// Every run of the program begins with the same sequence.
float NextRandom();

// Starts the sequence anew from the system clock. Without effect on a source that a test has put in.
void ReseedRandomFromClock();

// Puts another source in place of the program's own; an empty function brings that back, in its first state.
void SetRandomSource(std::function<float()> source);

}  // namespace platform
