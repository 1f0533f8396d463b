#include "platform/linux/applications/DesktopEntries.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <utility>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

namespace fs = std::filesystem;

class DesktopEntriesTest : public testing::Test {
protected:
    void SetUp() override { setenv("LANGUAGE", "en", 1); }

    [[nodiscard]] fs::path file(const std::string& data, const std::string& name) const {
        return folder_.path() / data / "applications" / name;
    }

    void write(const std::string& data, const std::string& name, const std::string& text) const {
        fs::create_directories(file(data, name).parent_path());
        std::ofstream(file(data, name)) << "[Desktop Entry]\n" << text;
    }

    /// The entry of a program; one without an id when there is none.
    [[nodiscard]] DesktopEntry find(const std::string& executable) const {
        const auto current = entries_.current();
        const DesktopEntry* const found = current->find(executable);
        return found == nullptr ? DesktopEntry() : *found;
    }

    /// Folders that have just changed are read again for a few milliseconds.
    [[nodiscard]] bool settles() const {
        const auto isSettled = [this] { return entries_.current() == entries_.current(); };
        for (int i = 0; i < 100 && !isSettled(); ++i) usleep(10000);
        return isSettled();
    }

    const TemporaryFolder folder_;
    const DesktopEntries entries_{{folder_.path() / "own", folder_.path() / "system", folder_.path() / "none"}};
};

TEST_F(DesktopEntriesTest, AnApplicationIsFoundByTheProgramThatItRuns) {
    write("system", "org.mail.Mail.desktop", "Name=Mail\nIcon=mail\nExec=/usr/bin/mail-client --open %u\n");
    EXPECT_EQ(find("mail-client").id, "org.mail.Mail");
    EXPECT_EQ(find("mail-client").name, "Mail");
    EXPECT_EQ(find("mail-client").icon, "mail");
    EXPECT_EQ(find("mail").id, "");
}

TEST_F(DesktopEntriesTest, AnyWayToWriteTheProgramIsUnderstood) {
    write("system", "one.desktop", "Name=One\nExec=\"/opt/My Programs/one\" %F\n");
    write("system", "two.desktop", "Name=Two\nExec=\"two\"\n");
    write("system", "three.desktop", "Name=Three\nExec=env LANG=C /usr/bin/three\n");
    write("system", "four.desktop", "Name=Four\nExec=\"/opt/\\\\$four\\\\\\\\4\"\n");
    for (const char* program : {"one", "two", "three", "$four\\4"}) EXPECT_NE(find(program).id, "") << program;
    EXPECT_EQ(find("env").id, "");
}

TEST_F(DesktopEntriesTest, AFolderThatIsNamedTwiceWithOtherSlashesIsReadAllTheSame) {
    write("system", "mail.desktop", "Name=Mail\nExec=mail\n");
    write("system", ".desktop", "Name=Nothing\nExec=nothing\n");
    const DesktopEntries entries({folder_.path().string() + "////////////////system", folder_.path() / "system"});
    const auto current = entries.current();
    ASSERT_NE(current->find("mail"), nullptr);
    EXPECT_EQ(current->find("mail")->id, "mail");
    EXPECT_EQ(current->find("nothing"), nullptr);
}

TEST_F(DesktopEntriesTest, EscapesInNamesAreUndone) {
    write("system", "mail.desktop", "Name=Mail\\sand\\\\more\nExec=mail\n");
    EXPECT_EQ(find("mail").name, "Mail and\\more");
}

TEST_F(DesktopEntriesTest, TheUsersOwnEntriesComeFirst) {
    write("own", "z.desktop", "Name=My news\nExec=news\n");
    write("system", "a.desktop", "Name=News\nExec=news\n");
    write("own", "mail.desktop", "Name=My mail\nExec=my-mail\n");
    write("system", "mail.desktop", "Name=Mail\nExec=mail\n");
    EXPECT_EQ(find("news").name, "My news");
    EXPECT_EQ(find("my-mail").name, "My mail");
    EXPECT_EQ(find("mail").id, "") << "there is another entry by this id";
}

TEST_F(DesktopEntriesTest, OfEqualProgramsTheFirstByIdCounts) {
    for (const char* name : {"c", "a", "d", "b"}) write("system", std::string(name) + ".desktop", "Name=Mail\nExec=mail\n");
    EXPECT_EQ(find("mail").id, "a");
}

TEST_F(DesktopEntriesTest, FoldersAreAPartOfTheId) {
    write("system", "kde/net/mail.desktop", "Name=Mail\nExec=mail\n");
    EXPECT_EQ(find("mail").id, "kde-net-mail");
}

TEST_F(DesktopEntriesTest, NamesAreInTheUsersLanguage) {
    write("system", "mail.desktop", "Name=Mail\nName[de]=Post\nName[pt_BR]=Correio\nIcon=mail\nIcon[de]=post\nExec=mail\n");
    for (const auto& [language, name] :
         {std::pair("de_AT.UTF-8", "Post"), {"pt_BR.UTF-8@any", "Correio"}, {"pt_PT", "Mail"}}) {
        setenv("LANGUAGE", language, 1);
        write("own", std::string(language) + ".desktop", "Name=New\nExec=new\n");
        EXPECT_EQ(find("mail").name, name) << language;
    }
    unsetenv("LANGUAGE");
    unsetenv("LC_ALL");
    setenv("LC_MESSAGES", "de_DE.UTF-8", 1);
    write("own", "newer.desktop", "Name=Newer\nExec=newer\n");
    EXPECT_EQ(find("mail").name, "Post");
    EXPECT_EQ(find("mail").icon, "post");
}

TEST_F(DesktopEntriesTest, WhatIsNoEntryOfAProgramIsPassedOver) {
    write("system", "mail.txt", "Name=Mail\nExec=mail\n");
    write("system", "link.desktop", "Name=Link\nURL=https://example.org/\n");
    write("system", "empty.desktop", "Name=Empty\nExec=\n");
    write("system", "open.desktop", "Name=Open\nExec=\"mail\n");
    write("system", "action.desktop", "Name=Mail\n# Exec=mail\n[Desktop Action New]\nExec=mail\n");
    write("system", "gone.desktop", "Name=Gone\nExec=mail\nTryExec=/nowhere/mail\n");
    ASSERT_EQ(mkfifo(file("system", "pipe.desktop").c_str(), 0600), 0);
    EXPECT_EQ(find("mail").id, "");
    EXPECT_EQ(find("").id, "");
}

TEST_F(DesktopEntriesTest, AnEntryThatIsBrokenElsewhereGivesWayToTheNextOne) {
    write("own", "mail.desktop", "Name=Broken\nExec=mail\nno key\n");
    write("system", "a.desktop", "Exec=mail\n[Desktop Entry\n");
    write("system", "b.desktop", "Name=Gone\nExec=mail\nTryExec=/nowhere/mail\n");
    write("system", "mail.desktop", "Name=Mail\nExec=mail\n");
    write("system", "z.desktop", "Name=Another\nExec=mail\n");
    EXPECT_EQ(find("mail").name, "Mail");
}

TEST_F(DesktopEntriesTest, KeysAreFoundAsTheKeyFileFormatHasThem) {
    write("system", "one.desktop", " \t Exec = one\r\nName=One\r\n");
    write("system", "two.desktop", "Exec=other\nExec=two\nName=Two");
    write("system", "three.desktop", "Name=Three\n[Other]\nExec=other\n[Desktop Entry]\nExec=three");
    write("system", "four.desktop", "Executable=other\nExec[de]=other\n\n#Exec=other\nExec=four");
    for (const char* program : {"one", "two", "three", "four"}) EXPECT_EQ(find(program).id, program);
    EXPECT_EQ(find("other").id, "");
}

TEST_F(DesktopEntriesTest, OfThreeEntriesByOneIdTheFirstThatRunsSomethingCounts) {
    const DesktopEntries entries({folder_.path() / "own", folder_.path() / "system", folder_.path() / "late"});
    write("own", "mail.desktop", "Name=Gone\nExec=mail\nTryExec=/nowhere/mail\n");
    write("system", "mail.desktop", "Name=Mail\nExec=mail\n");
    write("late", "mail.desktop", "Name=Late mail\nExec=late-mail\n");
    EXPECT_EQ(entries.current()->find("mail")->name, "Mail");
    EXPECT_EQ(entries.current()->find("late-mail"), nullptr);
}

TEST_F(DesktopEntriesTest, AProgramThatNoMenuShowsHasANameAllTheSame) {
    write("system", "mail.desktop", "Name=Mail\nExec=mail\nNoDisplay=true\n");
    write("system", "news.desktop", "Name=News\nExec=news\n");
    write("own", "news.desktop", "Hidden=true\n");
    EXPECT_EQ(find("mail").name, "Mail");
    EXPECT_EQ(find("news").name, "News");
}

TEST_F(DesktopEntriesTest, WhatIsInstalledAndRemovedIsNoticed) {
    EXPECT_EQ(find("mail").id, "") << "not even the folders are there";
    write("system", "mail.desktop", "Name=Mail\nExec=mail\n");
    EXPECT_EQ(find("mail").name, "Mail");
    write("system", "new.desktop", "Name=Better mail\nExec=mail\n");
    fs::rename(file("system", "new.desktop"), file("system", "mail.desktop"));
    EXPECT_EQ(find("mail").name, "Better mail");
    write("own", "folder/news.desktop", "Name=News\nExec=news\n");
    EXPECT_EQ(find("news").name, "News");
    EXPECT_TRUE(settles());
    write("own", "folder/paper.desktop", "Name=Paper\nExec=paper\n");
    EXPECT_EQ(find("paper").name, "Paper");
    fs::remove(file("system", "mail.desktop"));
    EXPECT_EQ(find("mail").id, "");
    EXPECT_EQ(find("news").name, "News");
}

TEST_F(DesktopEntriesTest, AFolderThatMayNotBeReadHidesOnlyWhatIsInIt) {
    if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
    for (const char* name : {"a", "b", "c"}) {
        write("system", std::string(name) + ".desktop", std::string("Exec=") + name + "\n");
        write("system", std::string(name) + "/inside.desktop", "Exec=inside\n");
        fs::permissions(file("system", name), fs::perms::none);
    }
    for (const char* program : {"a", "b", "c"}) EXPECT_EQ(find(program).id, program);
    for (const char* name : {"a", "b", "c"}) fs::permissions(file("system", name), fs::perms::owner_all);
}

TEST_F(DesktopEntriesTest, NothingIsReadAgainWhileNothingIsInstalled) {
    write("system", "mail.desktop", "Name=Mail\nExec=mail\n");
    EXPECT_TRUE(settles());
    EXPECT_EQ(find("mail").name, "Mail");
}

}  // namespace
}  // namespace ovin
