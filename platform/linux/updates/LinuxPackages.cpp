#include "platform/linux/updates/LinuxPackages.h"

#include <fcntl.h>
#include <gnu/libc-version.h>
#include <sodium.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/session/OwnProgram.h"
#include "platform/linux/system/Environment.h"
#include "platform/linux/system/ReplaceFile.h"
#include "platform/linux/system/StartProgram.h"
#include "platform/linux/system/TemporaryFile.h"

namespace ovin {
namespace {

using Installation = UpdatePackages::Installation;
using Outcome = Installation::Outcome;

/// The opener ends at once where it finds nothing to open a package with, and may last as long as the installer otherwise.
constexpr std::chrono::seconds openerPatience{5};
constexpr unsigned everybodyReads = 0644;
constexpr unsigned permissionBits = 07777;

template <std::size_t size>
std::optional<std::array<unsigned char, size>> bytesFrom(std::string_view base64) {
    std::array<unsigned char, size> bytes{};
    std::size_t length = 0;
    const char* end = nullptr;
    const int failed = sodium_base642bin(bytes.data(), bytes.size(), base64.data(), base64.size(), nullptr, &length, &end,
                                         sodium_base64_VARIANT_ORIGINAL);
    if (failed != 0 || length != size || end != base64.data() + base64.size()) return std::nullopt;
    return bytes;
}

/// A whole file in memory, for as long as this object lives.
class MappedFile {
public:
    MappedFile(int descriptor, std::size_t size)
        : size_(size), start_(mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0)) {}
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile() {
        if (isMapped()) munmap(start_, size_);
    }

    [[nodiscard]] bool isMapped() const { return start_ != MAP_FAILED; }
    [[nodiscard]] const unsigned char* bytes() const { return static_cast<const unsigned char*>(start_); }

private:
    const std::size_t size_;
    void* const start_;
};

std::string machineName() {
    utsname names{};
    return uname(&names) == 0 ? names.machine : "";
}

std::string debianArchitecture(const std::string& machine) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 8> others{{{"x86_64", "amd64"},
                                                                                   {"aarch64", "arm64"},
                                                                                   {"armv7l", "armhf"},
                                                                                   {"armv8l", "armhf"},
                                                                                   {"i686", "i386"},
                                                                                   {"i586", "i386"},
                                                                                   {"ppc64le", "ppc64el"},
                                                                                   {"mips64", "mips64el"}}};
    for (const auto& [kernel, debian] : others) {
        if (kernel == machine) return std::string(debian);
    }
    return machine;
}

/// Whether this can be the name of a file anywhere, and an argument of a program.
bool isHarmless(std::string_view name) {
    const auto isPlain = [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || std::string_view("._-+~").find(character) != std::string_view::npos;
    };
    constexpr std::size_t longest = 200;
    return !name.empty() && name.size() <= longest && std::all_of(name.begin(), name.end(), isPlain) &&
           name.front() != '.' && name.front() != '-';
}

Installation failure(const std::string& what, const std::error_code& error) {
    return {Outcome::failed, what + ": " + error.message() + "."};
}

/// Whether the program that opens files has taken this one.
bool open(const std::string& path) {
    pid_t pid = 0;
    if (startProgram("xdg-open", {path}, pid) != 0) return false;
    std::promise<int> promise;
    std::future<int> status = promise.get_future();
    std::thread([pid, promise = std::move(promise)]() mutable { promise.set_value(awaitEnd(pid)); }).detach();
    return status.wait_for(openerPatience) == std::future_status::timeout || status.get() == 0;
}

}  // namespace

std::optional<PublicKey> publicKeyFrom(std::string_view base64) { return bytesFrom<std::tuple_size_v<PublicKey>>(base64); }

void LinuxPackages::removeLeftovers() const {
    TemporaryFile::clear(options_.folder);
    if (!options_.appImage) return;
    std::error_code error;
    const std::filesystem::path image = std::filesystem::canonical(*options_.appImage, error);
    if (!error) removeUnfinishedReplacements(image);
}

std::string LinuxPackages::systemVersion() const { return gnu_get_libc_version(); }

bool LinuxPackages::suits(std::string_view fileName) const {
    if (!isHarmless(fileName)) return false;
    const std::string machine = machineName();
    if (options_.appImage) return fileName.ends_with("-" + machine + ".AppImage");
    return fileName.ends_with("_" + debianArchitecture(machine) + ".deb") || fileName.ends_with("_all.deb");
}

bool LinuxPackages::isSigned(const DownloadedFile& file, std::string_view edSignature) const {
    const auto* const downloaded = dynamic_cast<const TemporaryFile*>(&file);
    const auto signature = bytesFrom<crypto_sign_BYTES>(edSignature);
    if (downloaded == nullptr || !signature || downloaded->size() == 0 || sodium_init() < 0) return false;
    const MappedFile content(downloaded->descriptor(), downloaded->size());
    return content.isMapped() &&
           crypto_sign_verify_detached(signature->data(), content.bytes(), downloaded->size(), options_.key.data()) == 0;
}

Installation LinuxPackages::install(const DownloadedFile& file, std::string_view fileName) const {
    const auto* const downloaded = dynamic_cast<const TemporaryFile*>(&file);
    if (downloaded == nullptr || !suits(fileName)) return {Outcome::failed, "This is not a package for this computer."};
    return options_.appImage ? replaceImage(downloaded->descriptor()) : handOver(downloaded->descriptor(), fileName);
}

Installation LinuxPackages::replaceImage(int descriptor) const {
    std::error_code error;
    // A link to the image stays one.
    const std::filesystem::path image = std::filesystem::canonical(*options_.appImage, error);
    struct stat found {};
    if (error || stat(image.c_str(), &found) != 0) return {Outcome::failed, "The file of this program is gone."};
    error = copyInPlace(descriptor, image, found.st_mode & permissionBits);
    if (error) return failure(image.string() + " cannot be replaced", error);
    return {Outcome::replaced, image.string()};
}

Installation LinuxPackages::handOver(int descriptor, std::string_view fileName) const {
    const std::filesystem::path path = options_.folder / fileName;
    if (const auto error = copyInPlace(descriptor, path, everybodyReads)) {
        return failure(path.string() + " cannot be written", error);
    }
    if (open(path.string())) return {Outcome::handedOver, path.string()};
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    return {Outcome::failed, "There is no program here that installs packages."};
}

bool LinuxPackages::restartAtEnd() {
    const auto program = options_.appImage;
    std::array<int, 2> ends{};
    if (!program || !isExecutable(*program) || pipe2(ends.data(), O_CLOEXEC) != 0) return false;
    // The other end stays open until this process is gone, however it goes: reading ends then, and not before.
    pid_t pid = 0;
    const int error = startProgram("sh", {"-c", "read nothing <&3; exec \"$0\" 3<&-", program->string()}, pid, ends[0]);
    close(ends[0]);
    if (error != 0) close(ends[1]);
    return error == 0;
}

std::optional<std::filesystem::path> ownAppImage() {
    const auto program = programToStart();
    const auto image = environmentVariable("APPIMAGE");
    return program && image && *program == std::filesystem::path(*image) ? program : std::nullopt;
}

}  // namespace ovin
