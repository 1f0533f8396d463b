#include "platform/linux/items/StatusItemClick.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ovin {
namespace {

using enum StatusItemRequest;
using testing::ElementsAre;

TEST(LeftClick, OpensTheMenuOfAnItemThatIsOne) {
    EXPECT_THAT(leftClickRequests({true, true}), ElementsAre(menu, contextMenu));
}

TEST(LeftClick, LetsAnItemWithoutAMenuObjectShowItsOwn) {
    EXPECT_THAT(leftClickRequests({true, false}), ElementsAre(contextMenu));
}

TEST(LeftClick, ActivatesAnItemThatIsNoMenu) {
    EXPECT_THAT(leftClickRequests({false, true}), ElementsAre(activate, menu, contextMenu));
    EXPECT_THAT(leftClickRequests({false, false}), ElementsAre(activate, contextMenu));
}

TEST(LeftClick, OpensTheMenuOfAnItemThatDoesNotSay) {
    EXPECT_THAT(leftClickRequests({std::nullopt, true}), ElementsAre(menu, activate, contextMenu));
    EXPECT_THAT(leftClickRequests({std::nullopt, false}), ElementsAre(activate, contextMenu));
}

TEST(RightClick, OpensTheMenuWhateverTheItemIs) {
    EXPECT_THAT(rightClickRequests({true, true}), ElementsAre(menu, contextMenu));
    EXPECT_THAT(rightClickRequests({false, true}), ElementsAre(menu, contextMenu));
    EXPECT_THAT(rightClickRequests({std::nullopt, false}), ElementsAre(contextMenu));
}

}  // namespace
}  // namespace ovin
