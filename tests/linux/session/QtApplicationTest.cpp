#include "platform/linux/session/QtApplication.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>
#include <chrono>

namespace ovin {
namespace {

using namespace std::chrono_literals;

class QtApplicationTest : public testing::Test {
protected:
    QtApplication application;
    int told = 0;

    QtApplicationTest() {
        application.onTerminate([this] { ++told; });
    }

    /// Runs the program and lets it do something.
    template <typename Work>
    void runAnd(Work work) {
        QTimer::singleShot(0, work);
        const QObject untilTheEnd;  // other tests run in this process, later
        QTimer::singleShot(60s, &untilTheEnd, [] {
            ADD_FAILURE() << "the program goes on";
            std::abort();
        });
        EXPECT_EQ(application.run(), 0);
    }
};

TEST_F(QtApplicationTest, TheEndIsToldOnceBeforeTheProgramEnds) {
    runAnd([this] {
        application.terminate();
        EXPECT_EQ(told, 1);
        application.terminate();
    });
    EXPECT_EQ(told, 1);
}

TEST_F(QtApplicationTest, AnEndBeforeTheBeginningIsOneToo) {
    application.terminate();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(application.run(), 0);
    EXPECT_EQ(told, 1);
}

TEST_F(QtApplicationTest, WhoComesAfterTheEndWasAskedForIsTold) {
    QtApplication another;
    another.terminate();
    int late = 0;
    another.onTerminate([&] { ++late; });
    EXPECT_EQ(another.run(), 0);
    EXPECT_EQ(late, 1);
}

TEST_F(QtApplicationTest, NestedEventLoopsAreLeft) {
    runAnd([this] {
        QTimer::singleShot(0, [this] {
            QTimer::singleShot(0, [this] { application.terminate(); });
            QEventLoop().exec();
        });
        QMessageBox box;
        box.exec();
    });
    EXPECT_EQ(told, 1);
}

TEST_F(QtApplicationTest, AnEndInANestedLoopBeforeTheBeginningIsOneToo) {
    QTimer::singleShot(0, [this] { application.terminate(); });
    QMessageBox box;
    box.exec();
    EXPECT_EQ(application.run(), 0);
    EXPECT_EQ(told, 1);
}

TEST_F(QtApplicationTest, AMenuThatIsOpenHoldsNothingUp) {
    QMenu menu;
    menu.addAction("Entry");
    runAnd([&] {
        QTimer::singleShot(0, [this] { application.terminate(); });
        menu.exec();
    });
    EXPECT_EQ(told, 1);
}

TEST_F(QtApplicationTest, AWindowThatRefusesToCloseHoldsNothingUp) {
    class Stubborn final : public QWidget {
        void closeEvent(QCloseEvent* event) override { event->ignore(); }
    } window;
    window.show();
    runAnd([this] { application.terminate(); });
    EXPECT_EQ(told, 1);
}

TEST_F(QtApplicationTest, TheToolkitsOwnEndIsToldToo) {
    runAnd([] { QCoreApplication::quit(); });
    EXPECT_EQ(told, 1);
}

TEST_F(QtApplicationTest, AHandlerMayAskForTheEndAgainAndRunALoop) {
    application.onTerminate([this] {
        ++told;
        application.terminate();
        QEventLoop().processEvents();
    });
    runAnd([this] { application.terminate(); });
    EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace ovin
