#pragma once

namespace ovin {

/// Calls code of the product from a method, a block or a function that the system calls. No exception may pass into the
/// system's code, which is not made for any and would stop half-way. The program ends here instead, so that the crash report
/// shows the place; the next launch puts a widened display back.
template <typename Work>
decltype(auto) callBack(const Work& work) noexcept {
    return work();
}

}  // namespace ovin
