#pragma once

#include <string>
#include <string_view>

#include "platform/Downloads.h"

namespace ovin {

/// The packages that this program is delivered in. Main thread only, but for what reads or installs a file.
class UpdatePackages {
public:
    struct Installation {
        enum class Outcome {
            /// The new program is in the place of this one and runs from its next start on.
            replaced,
            /// The system's package installer has it and asks the person everything else.
            handedOver,
            /// All is as it was.
            failed,
        };
        Outcome outcome = Outcome::failed;
        /// For people: where the package lies that was handed over, or why the installation failed.
        std::string detail;

        friend bool operator==(const Installation&, const Installation&) = default;
    };

    virtual ~UpdatePackages() = default;

    /// What the minimum system of an item is compared with.
    [[nodiscard]] virtual std::string systemVersion() const = 0;

    /// Whether a file of this name is a package for this computer and the way in which this program was installed.
    [[nodiscard]] virtual bool suits(std::string_view fileName) const = 0;

    /// Whether the signature, in base64, is the one that the maker of this program has given to exactly this file. Reads all
    /// of the file. Any thread.
    [[nodiscard]] virtual bool isSigned(const DownloadedFile& file, std::string_view edSignature) const = 0;

    /// Installs a file, which has to be verified, under its name. May take seconds. Any thread.
    [[nodiscard]] virtual Installation install(const DownloadedFile& file, std::string_view fileName) const = 0;

    /// Starts the program that was installed once this one has ended; false when that cannot be arranged. Main thread only.
    [[nodiscard]] virtual bool restartAtEnd() = 0;
};

}  // namespace ovin
