#include <gtest/gtest.h>

#include "tests/contract/MacStage.h"

namespace ovin {

std::vector<NamedStageFactory> contractStages() {
    return {{"Mac", [] { return std::make_unique<MacStage>(); }}};
}

}  // namespace ovin

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    ovin::MacStage::prepareProcess(OVIN_STATUS_ITEM);
    return RUN_ALL_TESTS();
}
