#pragma once

namespace ovin {

/// Lets the calling thread, and those that it starts, give way to the one that paints: what runs in the background has more
/// time than what somebody is looking at. The thread cannot take it back.
void giveWay();

}  // namespace ovin
