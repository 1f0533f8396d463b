#include "info/PageText.h"

#include <string>

namespace ovin {

AttributedText markedText(std::string_view text, double size, SystemColor color) {
    constexpr std::string_view mark = "**";
    AttributedText runs;
    bool isBold = false;
    while (true) {
        const std::size_t end = text.find(mark);
        const std::string_view piece = text.substr(0, end);
        const Font font{size, isBold ? Font::Weight::bold : Font::Weight::regular};
        if (!piece.empty()) runs.push_back({std::string(piece), font, Color{color}});
        if (end == std::string_view::npos) return runs;
        text.remove_prefix(end + mark.size());
        isBold = !isBold;
    }
}

}  // namespace ovin
