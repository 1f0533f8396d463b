#include "platform/linux/items/QtItemMenus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <chrono>
#include <future>
#include <thread>

namespace ovin {
namespace {

using namespace std::chrono_literals;

TEST(QtItemMenus, AMenuThatGivesWayToALaterOneIsNotMissing) {
    QtItemMenus menus;
    const auto show = [&menus] { return menus.show("org.example.Nobody", "/Menu", 1h); };
    auto first = std::async(std::launch::async, show);
    auto second = std::async(std::launch::async, show);
    // Both have been asked for before this thread looks after the first of them.
    std::this_thread::sleep_for(500ms);
    const auto isReady = [](const auto& answer) { return answer.wait_for(0s) == std::future_status::ready; };
    while (!isReady(first) || !isReady(second)) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_NE(first.get(), second.get()) << "there is no menu, which only the later one finds out";
}

}  // namespace
}  // namespace ovin
