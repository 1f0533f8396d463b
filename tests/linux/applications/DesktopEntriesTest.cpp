#include "platform/linux/applications/DesktopEntries.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

class DesktopEntriesTest : public testing::Test {
protected:
    void write(const std::string& data, const std::string& name, const std::string& text) const {
        const auto folder = folder_.path() / data / "applications";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / name) << "[Desktop Entry]\n" << text;
    }

    /// Of the folders "own" and "system", in this order.
    [[nodiscard]] DesktopEntries entries(const std::string& language = "") const {
        return DesktopEntries({folder_.path() / "own", folder_.path() / "system", folder_.path() / "none"}, language);
    }

private:
    const TemporaryFolder folder_;
};

TEST_F(DesktopEntriesTest, AnApplicationIsFoundByTheProgramThatItRuns) {
    write("system", "org.mail.Mail.desktop", "Name=Mail\nIcon=mail\nExec=/usr/bin/mail-client --open %u\n");
    const auto found = entries().entryFor("mail-client");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, "org.mail.Mail");
    EXPECT_EQ(found->name, "Mail");
    EXPECT_EQ(found->icon, "mail");
    EXPECT_FALSE(entries().entryFor("mail"));
}

TEST_F(DesktopEntriesTest, AProgramMayStandInQuotesAndInAFolderWithABlank) {
    write("system", "one.desktop", "Name=One\nExec=\"/opt/My Programs/one\" %F\n");
    write("system", "two.desktop", "Name=Two\nExec=\"two\"\n");
    EXPECT_TRUE(entries().entryFor("one"));
    EXPECT_TRUE(entries().entryFor("two"));
}

TEST_F(DesktopEntriesTest, TheUsersOwnEntriesComeFirst) {
    write("own", "mail.desktop", "Name=My mail\nExec=mail\n");
    write("system", "mail.desktop", "Name=Mail\nExec=mail\n");
    EXPECT_EQ(entries().entryFor("mail").value().name, "My mail");
}

TEST_F(DesktopEntriesTest, NamesAreInTheUsersLanguage) {
    write("system", "mail.desktop", "Name=Mail\nName[de]=Post\nName[pt_BR]=Correio\nExec=mail\n");
    EXPECT_EQ(entries("de_AT.UTF-8").entryFor("mail").value().name, "Post");
    EXPECT_EQ(entries("pt_BR.UTF-8@any").entryFor("mail").value().name, "Correio");
    EXPECT_EQ(entries("pt_PT").entryFor("mail").value().name, "Mail");
}

TEST_F(DesktopEntriesTest, WhatIsNoEntryOfAProgramIsPassedOver) {
    write("system", "mail.txt", "Name=Mail\nExec=mail\n");
    write("system", "link.desktop", "Name=Link\nURL=https://example.org/\n");
    write("system", "empty.desktop", "Name=Empty\nExec=\n");
    write("system", "open.desktop", "Name=Open\nExec=\"mail\n");
    write("system", "action.desktop", "Name=Mail\n# Exec=mail\n[Desktop Action New]\nExec=mail\n");
    EXPECT_FALSE(entries().entryFor("mail"));
    EXPECT_FALSE(entries().entryFor(""));
}

}  // namespace
}  // namespace ovin
