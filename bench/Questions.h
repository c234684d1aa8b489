#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

namespace Quenzo::Bench {

/// Measures answer(question), one question after the other in an order that the branch predictor does not know from
/// the table. The time is that of one question.
template <typename T, typename Answer>
void AskInTurn(benchmark::State& state, const std::vector<T>& questions, Answer answer) {
    // A prime that divides the size of no table, so that every question comes once.
    constexpr std::size_t kStep = 23;
    std::vector<T> mixed;
    for (std::size_t i = 0; i < questions.size(); ++i) {
        mixed.push_back(questions[i * kStep % questions.size()]);
    }
    while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(mixed.size()))) {
        for (const T& question : mixed) {
            auto found = answer(question);
            benchmark::DoNotOptimize(found);
        }
    }
}

}  // namespace Quenzo::Bench
