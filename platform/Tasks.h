#pragma once

#include <cstddef>
#include <functional>

namespace ovin {

/// Work away from the main thread, for whatever may have to wait for other processes. A task touches no state of the
/// program: it works on copies and hands its result to the main queue.
class Tasks {
public:
    /// How soon the user waits for the result.
    enum class Priority { userInitiated, utility };

    virtual ~Tasks() = default;

    /// Runs `work` in a task of its own and returns at once. Any thread. Tasks that are still running when the program ends
    /// may be abandoned. Where the system refuses a further thread, the work runs within this call instead: blocking the
    /// caller for a moment is better than never delivering the result.
    virtual void start(Priority priority, std::function<void()> work) = 0;

    /// Runs `child(0)` ... `child(count - 1)` all at once, and returns when all of them have returned. `finished(i)` is
    /// called on the calling thread, one call at a time, in the order in which the children return, after everything that
    /// child i wrote has become visible.
    ///
    /// Call it within a task. Children that wait never hold up the others: there is no limit to how many wait at once. Where
    /// the system refuses a further thread, the child runs on the calling thread instead.
    virtual void forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                         const std::function<void(std::size_t)>& finished) = 0;
};

}  // namespace ovin
