// Release notes: the first byte says whether they are plain.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "updates/NotesText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::size_t total = 0;
    for (const auto& paragraph : ovin::notesParagraphs(text.substr(1), text.front() == 'p')) {
        if (paragraph.text.empty()) __builtin_trap();
        total += paragraph.text.size();
    }
    if (total > ovin::longestNotes) __builtin_trap();
    return 0;
}
