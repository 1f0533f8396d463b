#include "platform/linux/items/DBusMenuLabel.h"

#include <gtest/gtest.h>

namespace ovin {
namespace {

TEST(DBusMenuLabel, MarksTheMnemonicAsQtDoes) { EXPECT_EQ(qtMenuLabel("_Open"), "&Open"); }

TEST(DBusMenuLabel, MarksOnlyTheFirst) { EXPECT_EQ(qtMenuLabel("_Open _all"), "&Open all"); }

TEST(DBusMenuLabel, KeepsADoubledUnderscoreAsOne) { EXPECT_EQ(qtMenuLabel("a__b_c"), "a_b&c"); }

TEST(DBusMenuLabel, ShowsAnAmpersandAsItself) { EXPECT_EQ(qtMenuLabel("You & _me"), "You && &me"); }

TEST(DBusMenuLabel, DropsAMarkWithNothingBehind) { EXPECT_EQ(qtMenuLabel("Open_"), "Open"); }

TEST(DBusMenuLabel, MayBeEmpty) { EXPECT_EQ(qtMenuLabel(""), ""); }

}  // namespace
}  // namespace ovin
