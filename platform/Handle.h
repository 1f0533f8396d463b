#pragma once

namespace ovin {

/// Stands for something that is under way; destroying the handle ends it.
class Handle {
public:
    Handle() = default;
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    virtual ~Handle() = default;
};

}  // namespace ovin
