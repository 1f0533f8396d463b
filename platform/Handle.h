#pragma once

namespace ovin {

/// Stands for something that goes on, and ends it when it is destroyed.
class Handle {
public:
    Handle() = default;
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    virtual ~Handle() = default;
};

}  // namespace ovin
