#include "tests/contract/MemoryStage.h"

namespace ovin {

std::vector<NamedStageFactory> contractStages() {
    return {{"Memory", [] { return std::make_unique<MemoryStage>(); }}};
}

}  // namespace ovin
