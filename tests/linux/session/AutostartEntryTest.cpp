#include "platform/linux/session/AutostartEntry.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <vector>

#include "platform/linux/applications/DesktopEntryFile.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

using Status = LaunchAtLogin::Status;
namespace fs = std::filesystem;

class AutostartEntryTest : public testing::Test {
protected:
    AutostartEntryTest() {
        // Permissions that keep a user out of a folder do not stop root.
        fs::permissions(folder_.path(), fs::perms::all);
        fs::create_directories(system());
        useProgram("bin/ovin");
        setenv("PATH", ((folder_.path() / "bin").string() + ":" + getenv("PATH")).c_str(), 1);
    }

    void useProgram(const std::string& name) { places.program = makeProgram(name); }

    [[nodiscard]] fs::path makeProgram(const std::string& name) const {
        const fs::path path = folder_.path() / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "#!/bin/sh\n";
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }

    [[nodiscard]] fs::path home() const { return folder_.path(); }
    [[nodiscard]] fs::path system() const { return folder_.path() / "xdg/autostart"; }
    [[nodiscard]] fs::path file() const { return places.userFolder / "org.ovin.Ovin.desktop"; }
    [[nodiscard]] fs::path systemFile() const { return system() / "org.ovin.Ovin.desktop"; }

    void write(const std::string& text) const { writeTo(file(), text); }
    static void writeTo(const fs::path& path, const std::string& text) {
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }

    /// An entry that starts this program, with more lines.
    [[nodiscard]] std::string entryWith(const std::string& lines = "") const {
        return "[Desktop Entry]\nType=Application\nName=Ovin\nExec=" + places.program->string() + "\n" + lines;
    }

    [[nodiscard]] std::string text() const { return textOf(file()); }
    static std::string textOf(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    [[nodiscard]] std::optional<std::string> value(const std::string& key) const {
        return DesktopEntryFile::read(file()).value().value(key);
    }

    /// Whether the tool of those who wrote the rules for entries accepts this one.
    [[nodiscard]] bool isValid() const {
        return std::system(("desktop-file-validate --no-hints --warn-kde '" + file().string() + "' >&2").c_str()) == 0;
    }

    /// How many files there are, so that a file left from writing aside shows.
    [[nodiscard]] std::size_t fileCount() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(places.userFolder), {}));
    }

    [[nodiscard]] AutostartEntry entry() const {
        return AutostartEntry([this] { return places; });
    }

    const TemporaryFolder folder_;
    AutostartPlaces places{folder_.path() / "config/autostart", {folder_.path() / "xdg/autostart"}, {}, {"ubuntu", "GNOME"}};
};

TEST(AutostartPlaces, TheEnvironmentTellsWhereTheyAre) {
    setenv("XDG_CONFIG_HOME", "/my/config", 1);
    setenv("XDG_CONFIG_DIRS", "/one:relative::/two", 1);
    setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", 1);
    const AutostartPlaces places = autostartPlaces();
    EXPECT_EQ(places.userFolder, "/my/config/autostart");
    EXPECT_EQ(places.systemFolders, (std::vector<fs::path>{"/one/autostart", "/two/autostart"}));
    EXPECT_EQ(places.desktops, (std::vector<std::string>{"ubuntu", "GNOME"}));
    EXPECT_EQ(places.program, fs::read_symlink("/proc/self/exe"));
}

TEST(AutostartPlaces, WithoutVariablesTheyAreTheUsualOnes) {
    setenv("HOME", "/home/me", 1);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_CURRENT_DESKTOP"}) unsetenv(name);
    const AutostartPlaces places = autostartPlaces();
    EXPECT_EQ(places.userFolder, "/home/me/.config/autostart");
    EXPECT_EQ(places.systemFolders, std::vector<fs::path>{"/etc/xdg/autostart"});
    EXPECT_TRUE(places.desktops.empty());
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(autostartPlaces().userFolder, "/home/me/.config/autostart");
}

TEST(AutostartPlaces, AnEntryInATemporaryConfigurationIsThisPrograms) {
    const TemporaryFolder folder;
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    setenv("XDG_CONFIG_DIRS", (folder.path() / "none").c_str(), 1);
    AutostartEntry entry;
    EXPECT_EQ(entry.status(), Status::notRegistered);
    EXPECT_EQ(entry.registerApplication(), std::nullopt);
    EXPECT_EQ(entry.status(), Status::enabled);
    EXPECT_TRUE(fs::is_regular_file(folder.path() / "autostart/org.ovin.Ovin.desktop"));
}

TEST_F(AutostartEntryTest, RegisteringMakesAnEntryThatStartsThisProgram) {
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
    EXPECT_EQ(programOfExec(*value("Exec")), *places.program);
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms(0644));
    EXPECT_TRUE(isValid()) << text();
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AutostartEntryTest, UnregisteringLeavesNothing) {
    EXPECT_EQ(entry().unregisterApplication(), std::nullopt) << "nothing is there yet";
    ASSERT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().unregisterApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_EQ(fileCount(), 0U);
}

TEST_F(AutostartEntryTest, AnyPathOfTheProgramIsStartedAsItIs) {
    for (const std::string name : {"with blanks/ovin", "it's/ovin", "\"quoted\"/ovin", "$HOME `x`/ovin", "50%f/ovin",
                                   "back\\slash/ovin", " ahead/ovin", "\xC3\xBC/ovin", "=;#/ovin"}) {
        useProgram(name);
        ASSERT_EQ(entry().registerApplication(), std::nullopt) << name;
        EXPECT_EQ(entry().status(), Status::enabled) << text();
        EXPECT_EQ(programOfExec(*value("Exec")), *places.program) << text();
        EXPECT_EQ(value("TryExec"), places.program->string()) << text();
        EXPECT_TRUE(isValid()) << text();
        EXPECT_EQ(entry().unregisterApplication(), std::nullopt);
    }
}

TEST_F(AutostartEntryTest, WhatTheUserSwitchedOffOnlyTheUserCanAllow) {
    for (const char* line : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        for (const std::string& written : {entryWith(line), "[Desktop Entry]\n" + std::string(line)}) {
            write(written);
            EXPECT_EQ(entry().status(), Status::requiresApproval) << text();
            const auto explanation = entry().registerApplication();
            ASSERT_TRUE(explanation.has_value());
            EXPECT_NE(explanation->find("switched off"), std::string::npos);
            EXPECT_EQ(text(), written);
        }
    }
    EXPECT_EQ(entry().unregisterApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, AnEntryThatIsNotSwitchedOffIsEnabled) {
    for (const char* line : {"", "Hidden=false\n", "X-GNOME-Autostart-enabled=true\n", "OnlyShowIn=KDE;GNOME;\n",
                             "NotShowIn=KDE;\n", "TryExec=ovin\n", "X-Ovin-Unregistered=true\n"}) {
        write(entryWith(line));
        EXPECT_EQ(entry().status(), Status::enabled) << text();
        EXPECT_EQ(entry().registerApplication(), std::nullopt);
        EXPECT_EQ(text(), entryWith(line));
    }
}

TEST_F(AutostartEntryTest, AnEntryThatStartsNothingHereIsRepaired) {
    for (const std::string& written :
         {entryWith("OnlyShowIn=KDE;\n"), entryWith("NotShowIn=XFCE;GNOME;\n"), entryWith("OnlyShowIn=\n"),
          entryWith("TryExec=no-such-program\n"), std::string("[Desktop Entry]\nType=Application\nName=Ovin\n"),
          "[Desktop Entry]\nName=Ovin\nExec=" + makeProgram("other").string() + "\n",
          std::string("[Desktop Entry]\nName=Ovin\nExec=/gone/ovin\n")}) {
        write(written);
        EXPECT_EQ(entry().status(), Status::notRegistered) << written;
        EXPECT_EQ(entry().registerApplication(), std::nullopt);
        EXPECT_EQ(entry().status(), Status::enabled) << text();
        EXPECT_TRUE(isValid()) << text();
    }
}

TEST_F(AutostartEntryTest, AnotherWayToNameTheProgramIsAsGood) {
    fs::create_symlink(*places.program, home() / "link");
    for (const std::string& command :
         {std::string("ovin --option"), (home() / "link").string(), "\"" + places.program->string() + "\"",
          "env QT_SCALE_FACTOR=2 " + places.program->string()}) {
        write("[Desktop Entry]\nExec=" + command + "\n");
        EXPECT_EQ(entry().status(), Status::enabled) << command;
    }
}

TEST_F(AutostartEntryTest, WhatOthersWroteIsKept) {
    const std::string others =
        "Name[de]=Ofin\nComment=Mine\nX-KDE-autostart-phase=2\n\n[Desktop Action new]\nName=New\nExec=new\n";
    const std::string first = "# A comment\n\n[Desktop Entry]\nType=Application\n# Mine\nExec=";
    write(first + "/gone/ovin\nTryExec=ovin\nIcon=mine\nName=My Ovin\n" + others);
    ASSERT_EQ(entry().registerApplication(), std::nullopt);
    const std::string program = places.program->string();
    EXPECT_EQ(text(), first + "\"" + program + "\"\nTryExec=" + program + "\nIcon=mine\nName=My Ovin\n" + others);
}

TEST_F(AutostartEntryTest, LinesMayEndAsElsewhere) {
    write("[Desktop Entry]\r\nType=Application\r\nName=Ovin\r\nHidden=true\r\n");
    EXPECT_EQ(entry().status(), Status::requiresApproval);
    write("[Desktop Entry]\r\nExec=" + places.program->string() + "\r\n");
    EXPECT_EQ(entry().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, AFileThatIsNoEntryStartsNothingAndIsReplaced) {
    for (const std::string& written :
         {std::string(), std::string("garbage\0\xFF\n\n=\n[", 14), std::string("Exec=ovin\nHidden=true\n"),
          std::string("[Desktop\nExec=ovin\n"), entryWith("X=" + std::string(2U << 20U, 'x'))}) {
        write(written);
        EXPECT_EQ(entry().status(), Status::notRegistered);
        EXPECT_EQ(entry().registerApplication(), std::nullopt);
        EXPECT_EQ(entry().status(), Status::enabled);
        EXPECT_LT(fs::file_size(file()), 4096U);
        EXPECT_TRUE(isValid()) << text();
    }
}

TEST_F(AutostartEntryTest, ALinkIsReadAndReplacedAndWhatItPointsToLeftAlone) {
    const fs::path elsewhere = home() / "dotfiles/ovin.desktop";
    writeTo(elsewhere, entryWith("Hidden=true\n"));
    fs::create_directories(places.userFolder);
    fs::create_symlink(elsewhere, file());
    EXPECT_EQ(entry().status(), Status::requiresApproval);
    writeTo(elsewhere, "[Desktop Entry]\nComment=Mine\n");
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
    EXPECT_EQ(value("Comment"), "Mine");
    EXPECT_FALSE(fs::is_symlink(file()));
    EXPECT_EQ(textOf(elsewhere), "[Desktop Entry]\nComment=Mine\n");
    fs::remove(file());
    fs::create_symlink(elsewhere, file());
    EXPECT_EQ(entry().unregisterApplication(), std::nullopt);
    EXPECT_FALSE(fs::is_symlink(file()));
    EXPECT_TRUE(fs::exists(elsewhere));
}

TEST_F(AutostartEntryTest, ALinkToNowhereIsReplaced) {
    fs::create_directories(places.userFolder);
    fs::create_symlink(home() / "nowhere/at/all", file());
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, ThingsThatCannotBeReadKeepNobodyWaiting) {
    fs::create_directories(places.userFolder);
    ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, AFolderInPlaceOfTheEntryIsToldAndKept) {
    fs::create_directories(file() / "something");
    EXPECT_EQ(entry().status(), Status::notRegistered);
    for (const auto& explanation : {entry().registerApplication(), entry().unregisterApplication()}) {
        ASSERT_TRUE(explanation.has_value());
        EXPECT_NE(explanation->find("There is a folder at " + file().string()), std::string::npos) << *explanation;
    }
    EXPECT_TRUE(fs::is_directory(file() / "something"));
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AutostartEntryTest, AFileInPlaceOfTheFolderIsTold) {
    writeTo(places.userFolder, "");
    EXPECT_EQ(entry().status(), Status::notRegistered);
    const auto explanation = entry().registerApplication();
    ASSERT_TRUE(explanation.has_value());
    EXPECT_NE(explanation->find("a file in its place"), std::string::npos) << *explanation;
    EXPECT_EQ(entry().unregisterApplication(), std::nullopt);
}

TEST_F(AutostartEntryTest, AFolderThatBelongsToOthersIsTold) {
    if (geteuid() != 0) GTEST_SKIP() << "Only root has folders that are not this user's.";
    write(entryWith("NotShowIn=GNOME;\n"));
    const std::string before = text();
    // From here on as nobody.
    ASSERT_EQ(chmod(places.program->c_str(), 0755), 0);
    ASSERT_EQ(seteuid(65534), 0);
    const auto registering = entry().registerApplication();
    const auto unregistering = entry().unregisterApplication();
    ASSERT_EQ(seteuid(0), 0);
    for (const auto& explanation : {registering, unregistering}) {
        ASSERT_TRUE(explanation.has_value());
        EXPECT_NE(explanation->find("is not yours to change"), std::string::npos) << *explanation;
    }
    EXPECT_EQ(text(), before);
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AutostartEntryTest, AFileThatCannotBeWrittenWholeLeavesTheOldOne) {
    write(entryWith("NotShowIn=GNOME;\nComment=" + std::string(2000, 'x') + "\n"));
    const std::string before = text();
    // The next best thing to a full disk.
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit little{1024, limit.rlim_max};
    const auto previous = signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    const auto explanation = entry().registerApplication();
    setrlimit(RLIMIT_FSIZE, &limit);
    signal(SIGXFSZ, previous);
    ASSERT_TRUE(explanation.has_value());
    EXPECT_NE(explanation->find("cannot be changed: "), std::string::npos) << *explanation;
    EXPECT_EQ(text(), before);
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AutostartEntryTest, FailuresAreToldInWords) {
    const auto told = [](int error) { return autostartFailure("/a/b.desktop", {error, std::generic_category()}); };
    EXPECT_NE(told(ENOSPC).find("no space left on the disk"), std::string::npos);
    EXPECT_NE(told(EDQUOT).find("no space left on the disk"), std::string::npos);
    EXPECT_NE(told(EROFS).find("The folder /a is on a disk that can only be read"), std::string::npos);
    EXPECT_NE(told(EACCES).find("The folder /a is not yours to change"), std::string::npos);
    EXPECT_NE(told(EIO).find("/a/b.desktop cannot be changed"), std::string::npos);
}

TEST_F(AutostartEntryTest, AProgramThatIsGoneCannotBeRegisteredAndCanBeUnregistered) {
    ASSERT_EQ(entry().registerApplication(), std::nullopt);
    places.program.reset();
    EXPECT_EQ(entry().status(), Status::notFound);
    EXPECT_TRUE(entry().registerApplication().has_value());
    EXPECT_EQ(entry().unregisterApplication(), std::nullopt);
    EXPECT_FALSE(fs::exists(file()));
}

TEST_F(AutostartEntryTest, AnEntryForAllUsersCountsUntilItIsHidden) {
    writeTo(systemFile(), entryWith());
    EXPECT_EQ(entry().status(), Status::enabled);
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_FALSE(fs::exists(file())) << "there was nothing to do";
    EXPECT_EQ(entry().unregisterApplication(), std::nullopt);
    EXPECT_EQ(value("Hidden"), "true");
    EXPECT_TRUE(isValid()) << text();
    // Ovin has hidden it, not the user's settings, and so Ovin may show it again.
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
    EXPECT_EQ(value("Hidden"), std::nullopt);
    EXPECT_EQ(textOf(systemFile()), entryWith());
}

TEST_F(AutostartEntryTest, AnEntryForAllUsersThatStartsNothingIsNotRegistered) {
    writeTo(systemFile(), entryWith("Hidden=true\n"));
    EXPECT_EQ(entry().status(), Status::notRegistered) << "the user has not decided anything";
    EXPECT_EQ(entry().registerApplication(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, TheUsersEntryComesBeforeTheOneForAllUsers) {
    writeTo(systemFile(), entryWith());
    write(entryWith("Hidden=true\n"));
    EXPECT_EQ(entry().status(), Status::requiresApproval);
}

}  // namespace
}  // namespace ovin
