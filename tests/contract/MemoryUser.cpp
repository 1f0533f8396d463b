#include "tests/contract/MemoryUser.h"

namespace ovin {

std::vector<Rect> MemoryUser::windows() {
    const MemoryWindows& windows = world_.windows;
    std::vector<Rect> frames;
    if (windows.ledge()) frames.push_back(windows.ledge()->frame);
    for (const auto& page : windows.informationWindows()) {
        if (page.isOpen) frames.push_back({{}, page.size});
    }
    const auto card = windows.floatingPanel();
    if (card && card->isShown) frames.push_back({card->origin.value_or(Point{}), card->size});
    return frames;
}

void MemoryUser::click(int tag) {
    MemoryWindows& windows = world_.windows;
    if (windows.ledge()) return windows.click(tag);
    for (const auto& page : windows.informationWindows()) {
        if (page.isOpen) return windows.click(page.title, tag);
    }
    windows.clickFloatingPanel(tag);
}

}  // namespace ovin
