// How long finding a notation takes, for ranges that a countdown would spend hours on (budget 1 microsecond).

#include <benchmark/benchmark.h>

#include "dice/dice_search.h"

namespace {

void FindNotation(benchmark::State& state) {
    const auto from = static_cast<std::int32_t>(state.range(0));
    const auto to = static_cast<std::int32_t>(state.range(1));
    for (auto _ : state) benchmark::DoNotOptimize(orvane::SearchDice(from, to));
}
BENCHMARK(FindNotation)
    ->Args({1, 6})
    ->Args({1, 2000000000})
    ->Args({-2000000000, 2000000000})
    ->Args({0, 2147483647});

}  // namespace
