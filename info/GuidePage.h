#pragma once

#include "platform/Resources.h"
#include "platform/Views.h"

namespace ovin {

/// The buttons of the guide, by their tags.
enum class GuideButton : int { done = 0, organize = 1 };

/// The page that the guide scrolls: headings, paragraphs and two pictures, 480 points wide. Pictures that are missing are
/// left out, their captions are not.
[[nodiscard]] View guidePage(const Resources& resources);

/// The whole content of the guide's window: the header, `page` in a scroll view of this height, and the buttons.
[[nodiscard]] View guideContent(const Resources& resources, View page, double scrollHeight, bool isOrganizing);

}  // namespace ovin
