#pragma once

#include <QString>
#include <memory>
#include <string>
#include <utility>

#include "platform/UpdateFeed.h"

namespace ovin {

/// The feed of a module that is loaded when something is first read, and the network libraries with it: they take longer to
/// load than all that is Ovin's own, and nothing else needs them. Without the module nobody is reached.
class LoadedUpdateFeed final : public UpdateFeed {
public:
    /// `module` is the file; its function `ovinUpdateFeed` makes the feed for a program of the same `version`. Another one
    /// may have been installed since this program started.
    LoadedUpdateFeed(QString module, std::string version) : module_(std::move(module)), version_(std::move(version)) {}

    [[nodiscard]] std::unique_ptr<Reading> read(const std::string& url, std::function<void(Answer)> finished) override;

private:
    const QString module_;
    const std::string version_;
    /// Null until something is read.
    std::unique_ptr<UpdateFeed> feed_;
};

}  // namespace ovin
