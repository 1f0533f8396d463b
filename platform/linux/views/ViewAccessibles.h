#pragma once

namespace ovin {

/// Describes to assistive programs the widgets that the toolkit does not know: links, disclosure triangles, pictures. May be
/// called any number of times.
void installViewAccessibles();

}  // namespace ovin
