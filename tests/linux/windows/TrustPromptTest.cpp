#include "platform/linux/windows/TrustPrompt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <vector>

namespace ovin {
namespace {

class TrustPromptTest : public testing::Test {
protected:
    int enabled = 0;

    void ask() {
        askForTrust([this] { ++enabled; });
    }

    static void handleEvents() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static std::vector<QMessageBox*> prompts() {
        std::vector<QMessageBox*> found;
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const prompt = dynamic_cast<QMessageBox*>(widget)) found.push_back(prompt);
        }
        return found;
    }

    static void press(const QString& title) {
        for (QAbstractButton* const button : prompts().at(0)->buttons()) {
            if (button->text() == title) button->click();
        }
        handleEvents();
    }
};

TEST_F(TrustPromptTest, WhatTheUserAcceptsIsDoneOnce) {
    ask();
    ASSERT_EQ(prompts().size(), 1U);
    EXPECT_TRUE(prompts()[0]->isVisible());
    EXPECT_EQ(enabled, 0);
    press("Switch On");
    EXPECT_EQ(enabled, 1);
    EXPECT_TRUE(prompts().empty());
}

TEST_F(TrustPromptTest, WhoDeclinesIsAskedAgainNextTime) {
    ask();
    press("Not Now");
    EXPECT_EQ(enabled, 0);
    EXPECT_TRUE(prompts().empty());
    ask();
    press("Switch On");
    EXPECT_EQ(enabled, 1);
}

TEST_F(TrustPromptTest, AQuestionWithoutAnAnswerYetIsNotAskedTwice) {
    ask();
    ask();
    ASSERT_EQ(prompts().size(), 1U);
    press("Switch On");
    EXPECT_EQ(enabled, 1);
}

}  // namespace
}  // namespace ovin
