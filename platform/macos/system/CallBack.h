#pragma once

namespace ovin {

/// Calls what belongs to the product from a method, a block or a function that the system calls. No exception gets past it:
/// the system's own code takes none, and would be left half done. The program ends at this very place instead, which the
/// crash report then shows; a display that is widened is put back at the next launch.
template <typename Work>
decltype(auto) callBack(const Work& work) noexcept {
    return work();
}

}  // namespace ovin
