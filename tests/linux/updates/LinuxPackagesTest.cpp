#include "platform/linux/updates/LinuxPackages.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sodium.h>
#include <stdlib.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "platform/linux/system/TemporaryFile.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Outcome = UpdatePackages::Installation::Outcome;

std::string base64(const unsigned char* bytes, std::size_t size) {
    std::string text(sodium_base64_encoded_len(size, sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes, size, sodium_base64_VARIANT_ORIGINAL);
    text.pop_back();
    return text;
}

/// The key of a maker.
struct Maker {
    Maker() {
        if (sodium_init() >= 0) crypto_sign_keypair(publicKey.data(), secret.data());
    }
    [[nodiscard]] std::string sign(const std::string& text) const {
        std::array<unsigned char, crypto_sign_BYTES> signature{};
        crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                             secret.data());
        return base64(signature.data(), signature.size());
    }

    PublicKey publicKey{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret{};
};

/// With a stand-in for xdg-open; each test runs in a process of its own.
class LinuxPackagesTest : public testing::Test {
protected:
    LinuxPackagesTest() { setenv("PATH", (folder.path().string() + ":/usr/bin:/bin").c_str(), 1); }

    const TemporaryFolder folder;
    const std::filesystem::path cache = folder.path() / "cache";
    const std::filesystem::path image = folder.path() / "Ovin.AppImage";
    const Maker maker;
    const LinuxPackages debs{{maker.publicKey, {}, cache}};
    LinuxPackages images{{maker.publicKey, image, cache}};

    [[nodiscard]] std::shared_ptr<TemporaryFile> file(const std::string& text) const {
        std::error_code error;
        auto made = TemporaryFile::create(cache, text.size(), error);
        if (made) error = made->append(text);
        EXPECT_FALSE(error) << error.message();
        return made;
    }
    void script(const std::filesystem::path& path, const std::string& text) const {
        std::ofstream(path) << "#!/bin/sh\n" << text << "\n";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    static std::string read(const std::filesystem::path& path) {
        std::ifstream stream(path);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static std::string awaitText(const std::filesystem::path& path) {
        for (int i = 0; i < 2000 && read(path).empty(); ++i) std::this_thread::sleep_for(10ms);
        return read(path);
    }
    static std::size_t countIn(const std::filesystem::path& path) {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path), {}));
    }
    static std::string machine() {
        utsname names{};
        uname(&names);
        return names.machine;
    }
    [[nodiscard]] static std::string debName() { return "ovin_2.0_all.deb"; }
    [[nodiscard]] static std::string imageName() { return "Ovin-2.0-" + machine() + ".AppImage"; }
};

TEST_F(LinuxPackagesTest, WhatTheMakerSignedIsGenuine) {
    const std::string text(100000, 'p');
    EXPECT_TRUE(debs.isSigned(*file(text), maker.sign(text)));
}

TEST_F(LinuxPackagesTest, EveryOtherSignatureIsNot) {
    const std::string text(100000, 'p');
    const std::string signature = maker.sign(text);
    const auto downloaded = file(text);
    EXPECT_FALSE(debs.isSigned(*downloaded, Maker().sign(text)));
    EXPECT_FALSE(debs.isSigned(*downloaded, maker.sign(text + "p")));
    EXPECT_FALSE(debs.isSigned(*downloaded, ""));
    EXPECT_FALSE(debs.isSigned(*downloaded, std::string(86, 'A') + "=="));
    EXPECT_FALSE(debs.isSigned(*downloaded, signature.substr(0, 87)));
    EXPECT_FALSE(debs.isSigned(*downloaded, signature + "AAAA"));
    EXPECT_FALSE(debs.isSigned(*downloaded, signature + "\n"));
    EXPECT_FALSE(debs.isSigned(*downloaded, std::string(88, '!')));
    for (const std::size_t place : {0U, 50U, 80U}) {
        std::string altered = signature;
        altered[place] = altered[place] == 'A' ? 'B' : 'A';
        EXPECT_FALSE(debs.isSigned(*downloaded, altered)) << place;
    }
}

TEST_F(LinuxPackagesTest, AFileThatWasAlteredIsNotGenuine) {
    const std::string text(100000, 'p');
    const std::string signature = maker.sign(text);
    std::string altered = text;
    altered[99999] = 'q';
    EXPECT_FALSE(debs.isSigned(*file(altered), signature));
    EXPECT_FALSE(debs.isSigned(*file(text + "p"), signature));
    EXPECT_FALSE(debs.isSigned(*file(text.substr(1)), signature));
    EXPECT_FALSE(debs.isSigned(*file(""), maker.sign("")));
}

TEST_F(LinuxPackagesTest, AKeyIs32BytesInBase64) {
    EXPECT_EQ(publicKeyFrom(base64(maker.publicKey.data(), maker.publicKey.size())), maker.publicKey);
    for (const std::string& text : {std::string(), std::string("key"), std::string(43, 'A'),
                                    std::string(43, 'A') + "==", std::string(44, 'A'), std::string(42, 'A') + "=="}) {
        EXPECT_FALSE(publicKeyFrom(text).has_value()) << text;
    }
}

TEST_F(LinuxPackagesTest, PackagesOfThisMachineAndKindSuit) {
    EXPECT_TRUE(images.suits(imageName()));
    EXPECT_TRUE(debs.suits(debName()));
    EXPECT_FALSE(images.suits(debName()));
    EXPECT_FALSE(debs.suits(imageName()));
    EXPECT_EQ(debs.suits("ovin_2.0_amd64.deb"), machine() == "x86_64");
    EXPECT_EQ(debs.suits("ovin_2.0_arm64.deb"), machine() == "aarch64");
    EXPECT_FALSE(images.suits("Ovin-2.0-other.AppImage"));
    EXPECT_FALSE(debs.suits("ovin_2.0.tar.xz"));
}

TEST_F(LinuxPackagesTest, NamesThatLeadElsewhereSuitNobody) {
    for (const char* name : {"../a_all.deb", "/tmp/a_all.deb", "-a_all.deb", ".a_all.deb", "a b_all.deb", "a%2f_all.deb",
                             "a\n_all.deb", "", "_all.deb\\", "ä_all.deb", "a;b_all.deb", "$(a)_all.deb"}) {
        EXPECT_FALSE(debs.suits(name)) << name;
    }
    EXPECT_FALSE(debs.suits(std::string(300, 'a') + "_all.deb"));
}

TEST_F(LinuxPackagesTest, AnImageTakesThePlaceOfTheOldOneWithItsPermissions) {
    script(image, "old");
    chmod(image.c_str(), 0755);
    const auto result = images.install(*file("new"), imageName());
    EXPECT_EQ(result.outcome, Outcome::replaced) << result.detail;
    EXPECT_EQ(read(image), "new");
    struct stat found {};
    stat(image.c_str(), &found);
    EXPECT_EQ(found.st_mode & 07777, 0755U);
    EXPECT_EQ(countIn(folder.path()), 2U) << "something is left beside it";
}

TEST_F(LinuxPackagesTest, ALinkToAnImageStaysOne) {
    script(folder.path() / "Ovin-1.0.AppImage", "old");
    std::filesystem::create_symlink("Ovin-1.0.AppImage", image);
    EXPECT_EQ(images.install(*file("new"), imageName()).outcome, Outcome::replaced);
    EXPECT_TRUE(std::filesystem::is_symlink(image));
    EXPECT_EQ(read(image), "new");
}

TEST_F(LinuxPackagesTest, AnImageThatIsGoneIsNotReplaced) {
    const auto result = images.install(*file("new"), imageName());
    EXPECT_EQ(result.outcome, Outcome::failed);
    EXPECT_FALSE(std::filesystem::exists(image));
}

constexpr int cannotBeTried = 77;

/// Runs something in a process of its own, with the expectations in it; its status when these hold.
template <typename Work>
int inOwnProcess(const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        const bool wasTried = work();
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : (wasTried ? 0 : cannotBeTried));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(LinuxPackagesTest, AnImageInAFolderThatThisUserMayNotChangeStays) {
    script(image, "old");
    chmod(image.c_str(), 0755);
    const auto downloaded = file("new");
    const std::size_t count = countIn(folder.path());
    chmod(folder.path().c_str(), 0555);
    EXPECT_EQ(inOwnProcess([&] {
                  constexpr uid_t nobody = 65534;
                  if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0)) return false;
                  const auto result = images.install(*downloaded, imageName());
                  EXPECT_EQ(result.outcome, Outcome::failed);
                  EXPECT_TRUE(result.detail.starts_with(image.string() + " cannot be replaced: ")) << result.detail;
                  return true;
              }),
              0);
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(read(image), "#!/bin/sh\nold\n");
    EXPECT_EQ(countIn(folder.path()), count);
}

/// Puts a disk with room for 64 KiB there, which nobody else sees and which goes with this process.
bool mountSmallDisk(const std::filesystem::path& place) {
    std::filesystem::create_directories(place);
    const std::string user = "0 " + std::to_string(geteuid()) + " 1";
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/uid_map") << user;
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", place.c_str(), "tmpfs", 0, "size=64k,mode=700") == 0;
}

TEST_F(LinuxPackagesTest, AFullDiskLeavesTheOldImageAndNothingElse) {
    const int status = inOwnProcess([&] {
        const auto disk = folder.path() / "disk";
        if (!mountSmallDisk(disk)) return false;
        const auto there = disk / "Ovin.AppImage";
        script(there, "old");
        LinuxPackages onDisk({maker.publicKey, there, cache});
        const auto result = onDisk.install(*file(std::string(200000, 'n')), imageName());
        EXPECT_EQ(result.outcome, Outcome::failed);
        EXPECT_TRUE(result.detail.find("No space left") != std::string::npos) << result.detail;
        EXPECT_EQ(read(there), "#!/bin/sh\nold\n");
        EXPECT_EQ(countIn(disk), 1U);
        EXPECT_EQ(onDisk.install(*file(std::string(20000, 'n')), imageName()).outcome, Outcome::replaced);
        EXPECT_EQ(read(there).size(), 20000U);
        EXPECT_EQ(countIn(disk), 1U);

        std::error_code error;
        EXPECT_EQ(TemporaryFile::create(disk / "updates", 200000, error), nullptr) << "a download would begin";
        EXPECT_EQ(error.value(), ENOSPC);
        EXPECT_EQ(countIn(disk / "updates"), 0U);
        const LinuxPackages handing({maker.publicKey, {}, disk / "updates"});
        EXPECT_EQ(handing.install(*file(std::string(200000, 'n')), debName()).outcome, Outcome::failed);
        EXPECT_EQ(countIn(disk / "updates"), 0U);
        return true;
    });
    if (status == cannotBeTried) GTEST_SKIP() << "this user may not mount a disk";
    EXPECT_EQ(status, 0);
}

TEST_F(LinuxPackagesTest, WhoeverLooksMeanwhileSeesTheOldImageOrTheNewOne) {
    const std::string old(300000, 'o');
    const std::string fresh(400000, 'n');
    std::ofstream(image) << old;
    std::atomic<bool> isOver = false;
    std::size_t looks = 0;
    std::size_t halves = 0;
    std::thread looking([&] {
        do {
            const std::string seen = read(image);
            ++looks;
            if (seen != old && seen != fresh) ++halves;
        } while (!isOver);
    });
    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(images.install(*file(i % 2 == 0 ? fresh : old), imageName()).outcome, Outcome::replaced);
    }
    isOver = true;
    looking.join();
    EXPECT_EQ(halves, 0U) << "of " << looks;
}

TEST_F(LinuxPackagesTest, TheRunningProgramKeepsItsOwnFileAndTheNextStartRunsTheNewOne) {
    std::filesystem::copy_file("/bin/sleep", image);
    chmod(image.c_str(), 0755);
    const pid_t old = fork();
    if (old == 0) {
        execl(image.c_str(), "sleep", "100", nullptr);
        _exit(1);
    }
    while (std::filesystem::read_symlink("/proc/" + std::to_string(old) + "/exe") != image) std::this_thread::sleep_for(1ms);
    EXPECT_EQ(images.install(*file(read("/bin/echo")), imageName()).outcome, Outcome::replaced);
    EXPECT_EQ(kill(old, 0), 0);
    EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(old) + "/exe"), image.string() + " (deleted)");
    const auto said = folder.path() / "said";
    EXPECT_EQ(std::system((image.string() + " new > " + said.string()).c_str()), 0);
    EXPECT_EQ(read(said), "new\n");
    kill(old, SIGKILL);
    int status = 0;
    waitpid(old, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "it ended before it was killed";
}

TEST_F(LinuxPackagesTest, WhatAnInstallationThatWasKilledHasLeftGoesAtTheNextStart) {
    script(folder.path() / "Ovin-1.0.AppImage", "old");
    std::filesystem::create_symlink("Ovin-1.0.AppImage", image);
    const auto half = folder.path() / ".Ovin-1.0.AppImage.aBcDeF.new";
    std::ofstream(half) << "half";
    const std::size_t count = countIn(folder.path());
    images.removeLeftovers();
    EXPECT_FALSE(std::filesystem::exists(half));
    EXPECT_EQ(countIn(folder.path()), count - 1);
    std::filesystem::remove(image);
    images.removeLeftovers();
    EXPECT_EQ(countIn(folder.path()), count - 2);
}

TEST_F(LinuxPackagesTest, ADebianPackageIsHandedToThePersonsInstaller) {
    script(folder.path() / "xdg-open", "cat \"$1\" > " + (folder.path() / "opened").string() + "; exec sleep 3");
    const auto result = debs.install(*file("a package"), debName());
    EXPECT_EQ(result.outcome, Outcome::handedOver) << result.detail;
    EXPECT_EQ(result.detail, (cache / debName()).string());
    EXPECT_EQ(awaitText(folder.path() / "opened"), "a package");
    EXPECT_EQ(read(result.detail), "a package") << "the installer may read it later";
}

TEST_F(LinuxPackagesTest, WithoutAnInstallerNothingRemains) {
    script(folder.path() / "xdg-open", "exit 3");
    const auto result = debs.install(*file("a package"), debName());
    EXPECT_EQ(result.outcome, Outcome::failed);
    EXPECT_EQ(countIn(cache), 0U);
    setenv("PATH", "/nonexistent", 1);
    EXPECT_EQ(debs.install(*file("a package"), debName()).outcome, Outcome::failed);
    EXPECT_EQ(countIn(cache), 0U);
}

TEST_F(LinuxPackagesTest, AnInstallerThatTakesItAndEndsIsFine) {
    script(folder.path() / "xdg-open", "exit 0");
    EXPECT_EQ(debs.install(*file("a package"), debName()).outcome, Outcome::handedOver);
}

TEST_F(LinuxPackagesTest, TheNewProgramStartsWhenThisOneHasEnded) {
    const auto report = folder.path() / "report";
    script(image, "ls /proc/$$/fd | wc -l > " + report.string());
    const pid_t child = fork();
    if (child == 0) {
        const bool isArranged = images.restartAtEnd();
        std::this_thread::sleep_for(500ms);
        _exit(isArranged && !std::filesystem::exists(report) ? 0 : 1);
    }
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "it has started too early, or could not be arranged";
    EXPECT_FALSE(awaitText(report).empty());
}

TEST_F(LinuxPackagesTest, WithoutAnImageNoRestartIsArranged) {
    EXPECT_FALSE(images.restartAtEnd());
    EXPECT_FALSE(LinuxPackages({maker.publicKey, {}, cache}).restartAtEnd());
}

TEST_F(LinuxPackagesTest, TheSystemVersionIsThatOfTheCLibrary) { EXPECT_EQ(debs.systemVersion().substr(0, 2), "2."); }

}  // namespace
}  // namespace ovin
