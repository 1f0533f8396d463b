#include "platform/linux/system/XdgFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace ovin {
namespace {

using Paths = std::vector<std::filesystem::path>;

TEST(XdgFolders, TheEnvironmentTellsWhereTheyAre) {
    setenv("XDG_DATA_HOME", "/my/data", 1);
    setenv("XDG_DATA_DIRS", "/one::/two", 1);
    EXPECT_EQ(userFolder("XDG_DATA_HOME", ".local/share"), "/my/data");
    EXPECT_EQ(systemFolders("XDG_DATA_DIRS", "/usr/share"), (Paths{"/one", "/two"}));
}

TEST(XdgFolders, WithoutVariablesTheyAreTheUsualOnes) {
    setenv("HOME", "/home/me", 1);
    for (const char* value : {static_cast<const char*>(nullptr), ""}) {
        for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS"}) value ? setenv(name, value, 1) : unsetenv(name);
        EXPECT_EQ(userFolder("XDG_DATA_HOME", ".local/share"), "/home/me/.local/share");
        EXPECT_EQ(systemFolders("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), (Paths{"/usr/local/share", "/usr/share"}));
    }
}

TEST(XdgFolders, RelativePathsDoNotCount) {
    setenv("HOME", "/home/me", 1);
    setenv("XDG_DATA_HOME", "data", 1);
    setenv("XDG_DATA_DIRS", "/one:../two", 1);
    EXPECT_EQ(userFolder("XDG_DATA_HOME", ".local/share"), "/home/me/.local/share");
    EXPECT_EQ(systemFolders("XDG_DATA_DIRS", "/usr/share"), (Paths{"/one"}));
}

TEST(XdgFolders, WithoutAHomeFolderTheyAreWhereNobodyButRootWrites) {
    unsetenv("XDG_DATA_HOME");
    for (const char* value : {static_cast<const char*>(nullptr), "", "me"}) {
        value ? setenv("HOME", value, 1) : unsetenv("HOME");
        EXPECT_EQ(userFolder("XDG_DATA_HOME", ".local/share"), "/.local/share");
    }
}

}  // namespace
}  // namespace ovin
