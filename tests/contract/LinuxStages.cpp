#include <gtest/gtest.h>

#include <QApplication>

#include "tests/contract/LinuxStage.h"

namespace ovin {

std::vector<NamedStageFactory> contractStages() {
    return {{"Linux", [] { return std::make_unique<LinuxStage>(); }}};
}

}  // namespace ovin

/// The world needs a toolkit, and its event loop is what the main queue runs on.
int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    const QApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
