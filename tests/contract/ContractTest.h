#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "tests/contract/Stage.h"

namespace ovin {

/// What the contract tests of all interfaces share: a stage, and short ways to what is on it.
class ContractTest : public testing::TestWithParam<NamedStageFactory> {
protected:
    /// Nothing that works takes this long in any world.
    static constexpr std::chrono::seconds longTime{20};

    [[nodiscard]] Stage& stage() const { return *stage_; }
    [[nodiscard]] Platform platform() const { return stage_->platform(); }

    /// Whether a condition holds in the end.
    [[nodiscard]] bool becomes(const std::function<bool()>& condition) const {
        return stage().runUntil(condition, longTime);
    }

    /// Lets the event loop run for as long as what is on its way may take.
    void settle() const {
        stage().runUntil([] { return false; }, std::chrono::milliseconds(100));
    }

    /// Runs something in a task, and the main queue until it has ended.
    void inTask(const std::function<void()>& work) const {
        std::atomic<bool> hasEnded = false;
        platform().tasks.start(Tasks::Priority::userInitiated, [&] {
            work();
            hasEnded = true;
        });
        if (stage().runUntil([&] { return hasEnded.load(); }, longTime)) return;
        ADD_FAILURE() << "A task does not end.";
        std::abort();  // The task would go on with what this test is about to destroy.
    }

    /// How long something takes by the world's clock.
    [[nodiscard]] Stage::Duration duration(const std::function<void()>& work) const {
        const auto start = platform().clock.now();
        work();
        return platform().clock.now() - start;
    }

    /// Checks that something took as long as expected, and not longer than the machine's other work explains.
    void expectTook(Stage::Duration expected, Stage::Duration actual) const {
        EXPECT_GE(actual, expected - earliness) << actual.count() << " ns instead of " << expected.count();
        EXPECT_LE(actual, expected + stage().margin()) << actual.count() << " ns instead of " << expected.count();
    }

private:
    /// Systems round times, and some of them downwards.
    static constexpr std::chrono::milliseconds earliness{2};

    const std::unique_ptr<Stage> stage_ = GetParam().make();
};

/// How a failure shows a world. Here and not beside the stage, because a stage need not know of streams.
inline void PrintTo(const NamedStageFactory& factory, std::ostream* stream) { *stream << factory.name; }

inline std::string stageName(const testing::TestParamInfo<NamedStageFactory>& stage) { return stage.param.name; }

}  // namespace ovin

/// Skips the running test in a world that cannot do what it needs.
#define OVIN_NEEDS(ability) \
    if (const auto reason = stage().reasonWithout(Stage::Ability::ability)) GTEST_SKIP() << *reason

/// Runs a suite of contract tests in every world of the program.
#define OVIN_IN_EVERY_WORLD(Suite) INSTANTIATE_TEST_SUITE_P(Worlds, Suite, testing::ValuesIn(contractStages()), stageName)
