#include "platform/linux/windows/TrustPrompt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <utility>
#include <vector>

namespace ovin {
namespace {

class TrustPromptTest : public testing::Test {
protected:
    std::vector<bool> answers;

    void ask() {
        askForTrust([this](bool isAgreed) { answers.push_back(isAgreed); });
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

TEST_F(TrustPromptTest, ItTellsWhatTheUserAnswers) {
    for (const auto& [button, answer] : {std::pair{"Switch On", true}, {"Not Now", false}}) {
        ask();
        ASSERT_EQ(prompts().size(), 1U);
        EXPECT_TRUE(prompts()[0]->isVisible());
        EXPECT_TRUE(answers.empty());
        press(button);
        EXPECT_EQ(answers, std::vector{answer});
        EXPECT_TRUE(prompts().empty());
        answers.clear();
    }
}

TEST_F(TrustPromptTest, WhoClosesItDeclines) {
    ask();
    prompts().at(0)->close();
    handleEvents();
    EXPECT_EQ(answers, std::vector{false});
}

TEST_F(TrustPromptTest, ItSaysForHowLong) {
    ask();
    EXPECT_TRUE(prompts().at(0)->informativeText().contains("stays on in later sessions"));
    press("Not Now");
}

TEST_F(TrustPromptTest, AQuestionWithoutAnAnswerYetIsNotAskedTwice) {
    ask();
    ask();
    ASSERT_EQ(prompts().size(), 1U);
    press("Switch On");
    EXPECT_EQ(answers, std::vector{true});
}

}  // namespace
}  // namespace ovin
