#pragma once

#include <string>
#include <vector>

#include "platform/Resources.h"
#include "platform/Views.h"

namespace ovin {

/// What the About window shows. The tag of a link is its place in `links`.
struct AboutPage {
    static constexpr int doneTag = -1;

    View content;
    /// Where the links lead, as URLs.
    std::vector<std::string> links;
};

[[nodiscard]] AboutPage aboutPage(const Resources& resources);

}  // namespace ovin
