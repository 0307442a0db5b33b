// The tests' person in front of the real message boxes: reads each one and clicks a button.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace vantrel {

using Boxes = std::vector<std::string>;

constexpr const char* CableWarning = "WARNING - Communication Error!|Cannot Communicate with Target Board.\n"
                                     "Verify RS-232 Cable is Connected Between\nCOMM Port and PROG Port.";
constexpr const char* NotComplete = "RTFCD7|Error Processing Request\n\nProcess Not Complete";

/// Works from the event loop of whatever box is up.
class BoxAnswerer {
public:
    BoxAnswerer() {
        timer_.callOnTimeout([this] { Look(); });
        timer_.start(0);
    }

    /// Clicked in this order; when they have run out, the first of `habit` that the box has.
    std::deque<QMessageBox::StandardButton> answers;
    std::vector<QMessageBox::StandardButton> habit{QMessageBox::Cancel, QMessageBox::No, QMessageBox::Ok};
    /// Title and text of every box, "title|text".
    std::vector<std::string> shown;
    /// Whether so many boxes came up, each of which holds its text.
    [[nodiscard]] testing::AssertionResult Showed(const Boxes& texts) const {
        const auto holds = [](const std::string& box, const std::string& text) {
            return box.find(text) != std::string::npos;
        };
        return (std::ranges::equal(shown, texts, holds) ? testing::AssertionSuccess() : testing::AssertionFailure())
               << testing::PrintToString(shown);
    }
    /// Called before a box is answered.
    std::function<void()> whileShown;

private:
    void Look() {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || answering_) return;
        answering_ = true;
        shown.push_back((box->windowTitle() + "|" + box->text()).toStdString());
        if (whileShown) whileShown();
        QTest::mouseClick(Button(*box), Qt::LeftButton);
        answering_ = false;
    }
    QAbstractButton* Button(const QMessageBox& box) {
        if (!answers.empty()) {
            const QMessageBox::StandardButton wanted = answers.front();
            answers.pop_front();
            return box.button(wanted);
        }
        for (const auto usual : habit) {
            if (box.button(usual)) return box.button(usual);
        }
        return nullptr;
    }

    QTimer timer_;
    bool answering_ = false;
};

} // namespace vantrel
