#include "organize/FatalError.h"

#include <exception>

namespace ovin {

void fatalError(SystemLog& log, std::string_view line) {
    log.write(line);
    // Aborts, and leaves a crash report behind.
    std::terminate();
}

}  // namespace ovin
