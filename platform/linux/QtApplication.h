#pragma once

#include "platform/Application.h"

namespace ovin {

/// The Qt program itself.
class QtApplication final : public Application {
public:
    void activate() override;
    void terminate() override;
    void beep() override;
};

}  // namespace ovin
