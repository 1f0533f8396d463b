#pragma once

#include <array>
#include <filesystem>
#include <optional>

#include "platform/UpdatePackages.h"

namespace ovin {

/// An Ed25519 public key.
using PublicKey = std::array<unsigned char, 32>;

/// Read from base64; nothing when it is no key.
[[nodiscard]] std::optional<PublicKey> publicKeyFrom(std::string_view base64);

/// AppImages for a program that runs from one, which are put in the place of the running one, and Debian packages for any
/// other, which are handed to the person's package installer by xdg-open: nothing is ever installed as another user.
class LinuxPackages final : public UpdatePackages {
public:
    struct Options {
        PublicKey key;
        /// The image that this program runs from, if it does.
        std::optional<std::filesystem::path> appImage;
        /// A private folder for packages that are handed over.
        std::filesystem::path folder;
    };
    explicit LinuxPackages(Options options) : options_(std::move(options)) {}

    /// Removes what downloads and installations have left that were interrupted by the end of their process, and packages
    /// that were handed over more than a day ago.
    void removeLeftovers() const;

    /// That of the C library.
    [[nodiscard]] std::string systemVersion() const override;
    /// "Ovin-2.0-x86_64.AppImage", with what the kernel calls this machine, or "ovin_2.0_amd64.deb", with what Debian calls
    /// it, or "all".
    [[nodiscard]] bool suits(std::string_view fileName) const override;
    [[nodiscard]] bool isSigned(const DownloadedFile& file, std::string_view edSignature) const override;
    [[nodiscard]] Installation install(const DownloadedFile& file, std::string_view fileName) const override;
    [[nodiscard]] bool restartAtEnd() override;

private:
    [[nodiscard]] Installation replaceImage(int descriptor) const;
    [[nodiscard]] Installation handOver(int descriptor, std::string_view fileName) const;

    const Options options_;
};

/// The AppImage that this very process runs from; nothing when it runs from none.
[[nodiscard]] std::optional<std::filesystem::path> ownAppImage();

}  // namespace ovin
