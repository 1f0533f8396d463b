#include "platform/linux/items/DBusMenuLabel.h"

#include <cstddef>

namespace ovin {

std::string qtMenuLabel(std::string_view label) {
    std::string result;
    bool isMarked = false;
    for (std::size_t i = 0; i < label.size(); ++i) {
        const char c = label[i];
        if (c == '&') {
            result += "&&";
        } else if (c != '_') {
            result += c;
        } else if (label.substr(i, 2) == "__") {
            result += '_';
            ++i;
        } else if (!isMarked && i + 1 < label.size()) {
            result += '&';
            isMarked = true;
        }
    }
    return result;
}

}  // namespace ovin
