#include "platform/linux/applications/DesktopEntryText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ovin {
namespace {

TEST(DesktopEntryText, AKeyIsReadFromItsGroupAlone) {
    const DesktopEntryText entry(
        "[Other]\nName=Wrong\n[Desktop Entry]\n# Name=Comment\nName = Right \n[Desktop Action x]\nExec=no\n");
    EXPECT_EQ(entry.value("Name"), "Right");
    EXPECT_EQ(entry.value("Exec"), std::nullopt);
    EXPECT_EQ(DesktopEntryText("Name=Nowhere\n").value("Name"), std::nullopt);
}

TEST(DesktopEntryText, WhatIsNotChangedStaysAsItIs) {
    const std::string text = "# mine\n\n[Desktop Entry]\nName[de]=Ovin\nX-Foreign= 1;2 \n\n[Desktop Action x]\nExec=other\n";
    DesktopEntryText entry(text);
    EXPECT_EQ(entry.text(), text);
    entry.set("Hidden", "true");
    EXPECT_EQ(entry.text(),
              "# mine\n\n[Desktop Entry]\nName[de]=Ovin\nX-Foreign= 1;2 \nHidden=true\n\n[Desktop Action x]\nExec=other\n");
    entry.remove("Hidden");
    EXPECT_EQ(entry.text(), text);
}

TEST(DesktopEntryText, ASetKeyTakesThePlaceOfItsFormerValue) {
    DesktopEntryText entry("[Desktop Entry]\nExec=old\nName=Ovin\n");
    entry.set("Exec", "new");
    EXPECT_EQ(entry.text(), "[Desktop Entry]\nExec=new\nName=Ovin\n");
}

TEST(DesktopEntryText, ARemovedKeyIsGoneHoweverOftenItWasThere) {
    DesktopEntryText entry("[Desktop Entry]\nHidden=true\nName=Ovin\nHidden=true\n");
    entry.remove("Hidden");
    EXPECT_EQ(entry.text(), "[Desktop Entry]\nName=Ovin\n");
}

TEST(DesktopEntryText, AMissingGroupIsAdded) {
    DesktopEntryText entry("");
    EXPECT_FALSE(entry.hasGroup());
    entry.set("Name", "Ovin");
    EXPECT_TRUE(entry.hasGroup());
    EXPECT_EQ(entry.text(), "[Desktop Entry]\nName=Ovin\n");
}

TEST(DesktopEntryText, LinesKeepTheEndsThatTheyHave) {
    DesktopEntryText entry("[Desktop Entry]\r\nHidden=true\r\n");
    EXPECT_TRUE(entry.isTrue("Hidden"));
    entry.set("Name", "Ovin");
    EXPECT_EQ(entry.text(), "[Desktop Entry]\r\nHidden=true\r\nName=Ovin\r\n");
}

TEST(DesktopEntryText, AnyValueIsReadAsItWasSet) {
    for (const std::string value :
         {"plain", " blanks ahead", "back\\slash\\", "two\nlines", "tab\t", "\\n", "a=b;c#d", "\xC3\xA4\xFF"}) {
        DesktopEntryText entry("");
        entry.set("Key", value + "|");
        EXPECT_EQ(DesktopEntryText(entry.text()).value("Key"), value + "|");
    }
}

TEST(DesktopEntryText, AListIsWhatStandsBetweenSemicolons) {
    const DesktopEntryText entry("[Desktop Entry]\nOne=KDE\nTwo=GNOME;Unity;\nNone=\nEmpty=;;\n");
    EXPECT_EQ(entry.list("One"), std::vector<std::string>{"KDE"});
    EXPECT_EQ(entry.list("Two"), (std::vector<std::string>{"GNOME", "Unity"}));
    EXPECT_TRUE(entry.list("None").empty());
    EXPECT_TRUE(entry.list("Empty").empty());
    EXPECT_TRUE(entry.list("Absent").empty());
}

TEST(DesktopEntryText, ACommandNamesAnyPathAsOneWord) {
    EXPECT_EQ(execCommand("/usr/bin/ovin"), "\"/usr/bin/ovin\"");
    EXPECT_EQ(execCommand("/a b/\"$x`\\%f"), "\"/a b/\\\"\\$x\\`\\\\%%f\"");
    for (const std::string path :
         {"/usr/bin/ovin", "/a b/ovin", "/\"quoted\"/it's", "/$HOME/`x`", "/50%/%f%%", "/back\\slash", "/\xC3\xBC"}) {
        EXPECT_EQ(programOfExec(execCommand(path) + " --option \"more words\""), path);
    }
}

TEST(DesktopEntryText, ACommandThatOthersWroteIsReadToo) {
    EXPECT_EQ(programOfExec("ovin"), "ovin");
    EXPECT_EQ(programOfExec("  /usr/bin/ovin --x %U"), "/usr/bin/ovin");
    EXPECT_EQ(programOfExec("/usr/bin/ovin\t--x"), "/usr/bin/ovin");
    EXPECT_EQ(programOfExec(""), "");
    EXPECT_EQ(programOfExec("\"/no/end"), "");
    EXPECT_EQ(programOfExec("\""), "");
    EXPECT_EQ(programOfExec("\"\" x"), "");
}

}  // namespace
}  // namespace ovin
