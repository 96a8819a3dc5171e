#include "platform/random.h"

#include <chrono>
#include <cstdint>
#include <random>
#include <utility>

namespace platform {
namespace {

std::mt19937& Generator() {
    // Its default seed is the fixed state of every start. NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp)
    static std::mt19937 generator;
    return generator;
}

std::function<float()>& Replacement() {
    static std::function<float()> source;
    return source;
}

}  // namespace

float NextRandom() {
    if (Replacement()) return Replacement()();
    // 24 bits fill the significand of a float exactly, so the largest value stays below 1 without rounding.
    constexpr float kStep = 1.0F / 16777216.0F;
    return static_cast<float>(static_cast<std::uint32_t>(Generator()()) >> 8) * kStep;
}

void ReseedRandomFromClock() {
    const auto ticks =
        static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
    std::seed_seq seed{static_cast<std::uint32_t>(ticks), static_cast<std::uint32_t>(ticks >> 32)};
    Generator().seed(seed);
}

void SetRandomSource(std::function<float()> source) {
    if (!source) Generator().seed(std::mt19937::default_seed);
    Replacement() = std::move(source);
}

}  // namespace platform
