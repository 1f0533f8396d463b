#include "platform/linux/session/OwnProgram.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

class OwnProgram : public testing::Test {
protected:
    std::string program(const std::string& name) const {
        const auto path = folder_.path() / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "#!/bin/sh\n";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path.string();
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder_.path() / name).string(); }

    [[nodiscard]] Variables variables() const {
        return [this](const std::string& name) -> std::optional<std::string> {
            const auto found = environment.find(name);
            if (found == environment.end()) return std::nullopt;
            return found->second;
        };
    }

    std::map<std::string, std::string> environment;

private:
    const TemporaryFolder folder_;
};

TEST_F(OwnProgram, ItIsTheFileThatRuns) {
    const std::string ovin = program("bin dir/ovin");
    EXPECT_EQ(programToStart(ovin, variables()), ovin);
    EXPECT_NE(programToStart(), std::nullopt);
}

TEST_F(OwnProgram, ADeletedFileCannotBeStarted) {
    EXPECT_EQ(programToStart(path("ovin (deleted)"), variables()), std::nullopt);
    EXPECT_EQ(programToStart(path("ovin"), variables()), std::nullopt);
    EXPECT_EQ(programToStart("", variables()), std::nullopt);
}

TEST_F(OwnProgram, AFileThatANewerOneHasReplacedCanBeStarted) {
    const std::string ovin = program("ovin");
    EXPECT_EQ(programToStart(ovin + " (deleted)", variables()), ovin);
}

TEST_F(OwnProgram, AFileMayBeCalledDeleted) {
    const std::string ovin = program("ovin (deleted)");
    EXPECT_EQ(programToStart(ovin, variables()), ovin);
}

TEST_F(OwnProgram, AnImageIsStartedInPlaceOfWhatIsMountedFromIt) {
    const std::string inside = program(".mount_OvinXY/usr/bin/ovin");
    EXPECT_EQ(programToStart(inside, variables()), std::nullopt);
    environment["APPDIR"] = path(".mount_OvinXY");
    EXPECT_EQ(programToStart(inside, variables()), std::nullopt);
    environment["APPIMAGE"] = path("Ovin.AppImage");
    EXPECT_EQ(programToStart(inside, variables()), std::nullopt) << "it is no longer there";
    environment["APPIMAGE"] = program("Ovin.AppImage");
    EXPECT_EQ(programToStart(inside, variables()), environment["APPIMAGE"]);
}

TEST_F(OwnProgram, TheImageOfAnotherProgramIsNotOurs) {
    const std::string ovin = program("bin/ovin");
    environment = {{"APPDIR", path(".mount_Terminal")}, {"APPIMAGE", program("Terminal.AppImage")}};
    EXPECT_EQ(programToStart(ovin, variables()), ovin);
    EXPECT_EQ(programToStart(program(".mount_OvinXY/ovin"), variables()), std::nullopt);
}

}  // namespace
}  // namespace ovin
