#pragma once

#include "platform/Platform.h"
#include "platform/icu/IcuText.h"
#include "platform/memory/MemoryAccessibility.h"
#include "platform/memory/MemoryDisplays.h"
#include "platform/memory/MemoryLog.h"
#include "platform/memory/MemoryProcessInfo.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "platform/memory/MemoryWorkspace.h"
#include "platform/memory/SimulatedTime.h"

namespace ovin {

/// A whole world in memory, on simulated time: what tests set up, drive and look at. Texts sort as in English.
struct MemoryWorld {
    SimulatedTime time;
    MemoryAccessibility accessibility{[this](std::chrono::nanoseconds duration) { time.wait(duration); }};
    MemoryWorkspace workspace;
    MemoryDisplays displays;
    MemoryUserDefaults defaults;
    MemoryProcessInfo process;
    IcuText text{"en_US"};
    MemoryLog log;

    /// This world as the program sees it.
    [[nodiscard]] Platform platform() {
        return {accessibility, workspace, displays, defaults, process, text, log, time, time, time};
    }
};

}  // namespace ovin
