#pragma once

namespace ovin {

/// Tells assistive programs what the widgets of views are that the toolkit knows nothing of: links, triangles that disclose
/// something, pictures. Any number of times.
void installViewAccessibles();

}  // namespace ovin
