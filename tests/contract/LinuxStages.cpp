#include <gtest/gtest.h>

#include <QApplication>

#include "tests/contract/LinuxStage.h"

namespace ovin {

std::vector<NamedStageFactory> contractStages() {
    return {{"Linux", [] { return std::make_unique<LinuxStage>(); }}};
}

}  // namespace ovin

/// The world needs the toolkit, and the main queue runs on the toolkit's event loop.
int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    const QApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
