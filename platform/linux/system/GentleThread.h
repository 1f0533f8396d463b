#pragma once

namespace ovin {

/// Lowers the priority of the calling thread, and of those that it starts later, below that of the main thread, because the
/// user looks at what that one paints. Cannot be undone.
void giveWay();

}  // namespace ovin
