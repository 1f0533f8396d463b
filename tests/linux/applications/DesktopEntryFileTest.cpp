#include "platform/linux/applications/DesktopEntryFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

namespace fs = std::filesystem;

TEST(DesktopEntryFile, ACommandNamesAnyPathAsOneWord) {
    EXPECT_EQ(execCommand("/usr/bin/ovin"), "\"/usr/bin/ovin\"");
    EXPECT_EQ(execCommand("/a b/\"$x`\\%f"), "\"/a b/\\\"\\$x\\`\\\\%%f\"");
    for (const std::string path :
         {"/usr/bin/ovin", "/a b/ovin", "/\"quoted\"/it's", "/$HOME/`x`", "/50%/%f%%", "/back\\slash", "/\xC3\xBC"}) {
        EXPECT_EQ(programOfExec(execCommand(path) + " --option \"more words\""), path);
    }
}

TEST(DesktopEntryFile, ACommandThatOthersWroteIsReadToo) {
    EXPECT_EQ(programOfExec("ovin"), "ovin");
    EXPECT_EQ(programOfExec("  /usr/bin/ovin --x %U"), "/usr/bin/ovin");
    EXPECT_EQ(programOfExec("/usr/bin/ovin\t--x"), "/usr/bin/ovin");
    EXPECT_EQ(programOfExec("'/a b/ovin' x"), "/a b/ovin");
    for (const char* none : {"", " ", "\"/no/end", "\"", "\"\" x"}) EXPECT_EQ(programOfExec(none), "") << none;
}

TEST(DesktopEntryFile, EnvIsNotTheProgramThatACommandStarts) {
    EXPECT_EQ(programOfExec("env QT_SCALE_FACTOR=2 \"A=b c\" ovin --x=y"), "ovin");
    EXPECT_EQ(programOfExec("/usr/bin/env -i /usr/bin/ovin"), "/usr/bin/ovin");
    EXPECT_EQ(programOfExec("env A=b"), "");
    EXPECT_EQ(programOfExec("env"), "");
}

TEST(DesktopEntryFile, ANameIsLookedUpInThePathAndAPathIsNot) {
    const TemporaryFolder folder;
    const fs::path ovin = folder.path() / "second/ovin";
    fs::create_directories(folder.path() / "first/ovin");
    fs::create_directories(ovin.parent_path());
    std::ofstream(ovin) << "#!/bin/sh\n";
    EXPECT_EQ(findProgram(ovin), std::nullopt) << "nobody may run it";
    fs::permissions(ovin, fs::perms::owner_all);
    fs::current_path(folder.path());
    const std::string folders = (folder.path() / "first").string() + ":" + (folder.path() / "second").string();
    setenv("PATH", (folders + ":" + getenv("PATH")).c_str(), 1);
    EXPECT_EQ(findProgram("ovin"), ovin);
    EXPECT_EQ(findProgram(ovin), ovin);
    EXPECT_EQ(findProgram("second/ovin"), std::nullopt);
    EXPECT_EQ(findProgram(folder.path() / "first/ovin"), std::nullopt) << "a folder";
    EXPECT_EQ(findProgram("no-such-program"), std::nullopt);
    EXPECT_EQ(findProgram(""), std::nullopt);
}

}  // namespace
}  // namespace ovin
