#pragma once

#include <QString>
#include <memory>
#include <utility>

#include "platform/UpdateFeed.h"

namespace ovin {

/// The feed of a module that is loaded when something is first read, and the network libraries with it: they take longer to
/// load than all that is Ovin's own, and nothing else needs them. Without the module nobody is reached.
class LoadedUpdateFeed final : public UpdateFeed {
public:
    /// `module` is the file; its function `ovinUpdateFeed` makes the feed.
    explicit LoadedUpdateFeed(QString module) : module_(std::move(module)) {}

    [[nodiscard]] std::unique_ptr<Reading> read(const std::string& url, std::function<void(Answer)> finished) override;

private:
    const QString module_;
    /// Null until something is read.
    std::unique_ptr<UpdateFeed> feed_;
};

}  // namespace ovin
