// Desktop entries: whatever the file holds, its texts are texts, and what it runs has no field codes left.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/linux/applications/DesktopEntryFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("entry", MFD_CLOEXEC);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size)) __builtin_trap();
    auto entry = ovin::DesktopEntryFile::read("/proc/self/fd/" + std::to_string(file), G_KEY_FILE_KEEP_TRANSLATIONS);
    if (!entry) return 0;
    for (const char* key : {"Name", "Icon", "Exec", "TryExec", "Hidden"}) {
        (void)entry->localizedValue(key);
        (void)entry->list(key);
        (void)entry->isTrue(key);
        if (const auto value = entry->value(key)) {
            // What this quotes, it can read.
            if (ovin::programOfExec(ovin::execCommand(*value)).empty() && !value->empty() && *value != "env")
                __builtin_trap();
            (void)ovin::programOfExec(*value);
        }
    }
    entry->set("Hidden", "true");
    if (!entry->isTrue("Hidden") || entry->text().empty()) __builtin_trap();
    entry->remove("Hidden");
    if (entry->isTrue("Hidden")) __builtin_trap();
    return 0;
}
