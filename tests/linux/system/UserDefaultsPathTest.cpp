#include "platform/linux/system/FileUserDefaults.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace ovin {
namespace {

TEST(UserDefaultsPath, TheEnvironmentTellsWhereTheSettingsAre) {
    setenv("XDG_CONFIG_HOME", "/my/config", 1);
    EXPECT_EQ(userDefaultsPath(), "/my/config/ovin/defaults");
}

TEST(UserDefaultsPath, WithoutAnAbsoluteFolderTheyAreInTheUsualOne) {
    setenv("HOME", "/home/me", 1);
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(userDefaultsPath(), "/home/me/.config/ovin/defaults");
    for (const char* folder : {"", "relative", "../relative"}) {
        setenv("XDG_CONFIG_HOME", folder, 1);
        EXPECT_EQ(userDefaultsPath(), "/home/me/.config/ovin/defaults") << folder;
    }
}

}  // namespace
}  // namespace ovin
