// How long saving and loading 100 questions takes (budget 100 milliseconds for a save).

#include <benchmark/benchmark.h>

#include <filesystem>

#include "alignment/question_file.h"
#include "platform/places.h"

namespace {

const std::filesystem::path kFolder = std::filesystem::temp_directory_path() / "orvane-questions-benchmark";

orvane::QuestionList FullList(char mark) {
    orvane::QuestionList list;
    for (std::int32_t i = 1; i <= orvane::kMaxQuestions; ++i) {
        list[i].Text = std::string(150, mark);
        for (std::int32_t j = 1; j <= orvane::kAnswerCount; ++j) {
            list[i].Answers[j].Text = std::string(40, mark);
            list[i].Answers[j].Value = "LG";
        }
    }
    return list;
}

// A user's folder of the benchmark's own, for as long as it lives.
struct UserFolder {
    UserFolder() { platform::SetPlaces({.UserData = kFolder, .Program = kFolder / "program"}); }
    ~UserFolder() {
        platform::SetPlaces();
        std::filesystem::remove_all(kFolder);
    }
};

void SaveHundredQuestions(benchmark::State& state) {
    const UserFolder folder;
    const orvane::QuestionList lists[] = {FullList('a'), FullList('b')};
    std::size_t turn = 0;
    for (auto _ : state)
        orvane::SaveQuestions(orvane::kQuestionFile, lists[turn++ % 2], orvane::kMaxQuestions);
}
BENCHMARK(SaveHundredQuestions)->Unit(benchmark::kMillisecond);

void LoadHundredQuestions(benchmark::State& state) {
    const UserFolder folder;
    orvane::QuestionList list = FullList('a');
    orvane::SaveQuestions(orvane::kQuestionFile, list, orvane::kMaxQuestions);
    for (auto _ : state) benchmark::DoNotOptimize(orvane::LoadQuestions(orvane::kQuestionFile, list));
}
BENCHMARK(LoadHundredQuestions)->Unit(benchmark::kMillisecond);

}  // namespace
