#include <algorithm>
#include <atomic>
#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

/// How long to wait for news that must not come.
constexpr std::chrono::milliseconds longEnough{1500};

class WorkspaceContract : public ContractTest {
protected:
    [[nodiscard]] Workspace& workspace() const { return platform().workspace; }

    [[nodiscard]] std::optional<RunningApplication> running(ProcessID pid) const {
        for (RunningApplication& application : workspace().runningApplications()) {
            if (application.pid == pid) return std::move(application);
        }
        return std::nullopt;
    }

    /// Starts an application and waits until the workspace has noticed it.
    [[nodiscard]] ProcessID startAndWait(const std::string& name) const {
        const ProcessID pid = stage().start({name, {"One"}});
        EXPECT_TRUE(stage().runUntil([&] { return running(pid).has_value(); }, longTime)) << name;
        return pid;
    }

    [[nodiscard]] std::vector<ProcessID> pids() const {
        std::vector<ProcessID> result;
        for (const RunningApplication& application : workspace().runningApplications()) result.push_back(application.pid);
        return result;
    }
};

TEST_P(WorkspaceContract, AStartedApplicationIsListedUntilItQuits) {
    const ProcessID pid = startAndWait("App");
    stage().quit(pid);
    EXPECT_TRUE(stage().runUntil([&] { return !running(pid).has_value(); }, longTime));
}

TEST_P(WorkspaceContract, QuittingOneApplicationLeavesTheOthers) {
    const ProcessID one = startAndWait("One");
    const ProcessID other = startAndWait("Other");
    stage().quit(one);
    EXPECT_TRUE(stage().runUntil([&] { return !running(one).has_value(); }, longTime));
    EXPECT_TRUE(running(other).has_value());
}

TEST_P(WorkspaceContract, EveryProcessIsListedOnce) {
    (void)startAndWait("One");
    (void)startAndWait("Other");
    const auto all = pids();
    EXPECT_EQ(std::set<ProcessID>(all.begin(), all.end()).size(), all.size());
    EXPECT_TRUE(std::all_of(all.begin(), all.end(), [](ProcessID pid) { return pid > 0; }));
}

TEST_P(WorkspaceContract, TheOrderIsStableWhileNothingStartsOrEnds) {
    for (const char* name : {"One", "Two", "Three", "Four"}) (void)startAndWait(name);
    const auto first = pids();
    EXPECT_EQ(pids(), first);
    EXPECT_EQ(pids(), first);
}

TEST_P(WorkspaceContract, AnApplicationThatStartsOrEndsIsToldOnce) {
    int told = 0;
    workspace().observeApplications([&told] { ++told; });
    const ProcessID pid = startAndWait("App");
    EXPECT_TRUE(stage().runUntil([&told] { return told > 0; }, longTime));
    EXPECT_FALSE(stage().runUntil([&told] { return told > 1; }, longEnough)) << told;
    stage().quit(pid);
    EXPECT_TRUE(stage().runUntil([&told] { return told > 1; }, longTime));
    EXPECT_FALSE(stage().runUntil([&told] { return told > 2; }, longEnough)) << told;
}

TEST_P(WorkspaceContract, CommandsOfScriptsAreNotTold) {
    int told = 0;
    workspace().observeApplications([&told] { ++told; });
    for (int i = 0; i < 5; ++i) stage().runCommand();
    EXPECT_FALSE(stage().runUntil([&told] { return told > 0; }, longEnough)) << told;
}

TEST_P(WorkspaceContract, AnApplicationHasANameAndAnAbsolutePathIfAny) {
    const auto application = running(startAndWait("Named"));
    ASSERT_TRUE(application.has_value());
    ASSERT_TRUE(application->localizedName.has_value());
    EXPECT_FALSE(application->localizedName->empty());
    EXPECT_EQ(application->bundlePath.value_or("/").front(), '/');
    EXPECT_NE(application->bundleIdentifier, std::string());
}

TEST_P(WorkspaceContract, AnUnusedProcessIsNotListed) { EXPECT_FALSE(running(stage().unusedProcessID()).has_value()); }

TEST_P(WorkspaceContract, APathThatDoesNotExistIsShownAsItsLastComponent) {
    EXPECT_EQ(workspace().displayName("/nowhere/at/all/Missing Thing"), "Missing Thing");
    EXPECT_EQ(workspace().displayName("/nowhere/at/all/Missing/"), "Missing");
    EXPECT_EQ(workspace().displayName("/nowhere/at/all/Fehl\u00E4nzeige"), "Fehl\u00E4nzeige");
}

TEST_P(WorkspaceContract, AnyPathCanBeAskedAbout) {
    for (const char* path : {"", "/", "//", "relative", "/nowhere/at/all/Missing"}) {
        (void)workspace().displayName(path);
        (void)workspace().icon(path);
    }
    EXPECT_EQ(workspace().displayName("relative"), "relative");
}

TEST_P(WorkspaceContract, TasksMayListWhileApplicationsComeAndGo) {
    std::atomic<int> running = 4;
    for (int i = 0; i < 4; ++i) {
        platform().tasks.start(Tasks::Priority::utility, [&] {
            for (int n = 0; n < 50; ++n) (void)workspace().runningApplications();
            --running;
        });
    }
    stage().quit(stage().start({"Brief", {"One"}}));
    EXPECT_TRUE(stage().runUntil([&] { return running == 0; }, longTime));
}

OVIN_IN_EVERY_WORLD(WorkspaceContract);

}  // namespace
}  // namespace ovin
