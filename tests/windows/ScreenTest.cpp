// Entry boxes select their whole text on focus, and only then.
#include "platform/QtScreen.h"

#include <QHBoxLayout>
#include <QTest>

#include <gtest/gtest.h>

namespace vantrel {
namespace {

class EntryBoxTest : public testing::Test {
protected:
    EntryBoxTest() {
        auto* row = new QHBoxLayout(&window);
        for (QLineEdit* box : {&other, &entry})
            row->addWidget(box);
        entry.setText(QStringLiteral("123456"));
        entry.setMinimumWidth(200);
        SelectAllOnFocus(entry);
        window.show();
        window.activateWindow();
        other.setFocus();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] std::string Selected() {
        QCoreApplication::processEvents();
        return entry.selectedText().toStdString();
    }
    [[nodiscard]] QPoint InText(int characters) const {
        return {entry.fontMetrics().horizontalAdvance(entry.text().left(characters)) + 6, entry.height() / 2};
    }

    QWidget window;
    QLineEdit other{&window};
    QLineEdit entry{&window};
};

TEST_F(EntryBoxTest, ByKeyByProgramAndByClickButNotAfterADragNorOnReturnFromAnotherWindow) {
    const std::function<void()> ways[] = {[this] { QTest::keyClick(&other, Qt::Key_Tab); },
                                          [this] { entry.setFocus(Qt::OtherFocusReason); },
                                          [this] { QTest::mouseClick(&entry, Qt::LeftButton, {}, InText(3)); }};
    for (const auto& way : ways) {
        other.setFocus();
        entry.deselect();
        way();
        EXPECT_EQ(Selected(), "123456");
    }
    QTest::mouseClick(&entry, Qt::LeftButton, {}, InText(3));
    EXPECT_EQ(Selected(), "") << "a second click puts the cursor";
    other.setFocus();
    QTest::mousePress(&entry, Qt::LeftButton, {}, InText(1));
    QTest::mouseMove(&entry, InText(3));
    entry.setSelection(1, 2);
    QTest::mouseRelease(&entry, Qt::LeftButton, {}, InText(3));
    EXPECT_EQ(Selected(), "23");
    QWidget box;
    box.show();
    box.activateWindow();
    EXPECT_EQ(Selected(), "23");
    ASSERT_FALSE(entry.hasFocus());
    window.activateWindow();
    EXPECT_EQ(Selected(), "23");
    ASSERT_TRUE(entry.hasFocus());
}

} // namespace
} // namespace vantrel
