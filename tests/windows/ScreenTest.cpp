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

TEST_F(EntryBoxTest, ByKeyByProgramAndByClick) {
    QTest::keyClick(&other, Qt::Key_Tab);
    EXPECT_EQ(Selected(), "123456");
    other.setFocus();
    entry.deselect();
    entry.setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(Selected(), "123456");
    other.setFocus();
    entry.deselect();
    QTest::mousePress(&entry, Qt::LeftButton, {}, InText(3));
    QTest::mouseRelease(&entry, Qt::LeftButton, {}, InText(3));
    EXPECT_EQ(Selected(), "123456");
    QTest::mouseClick(&entry, Qt::LeftButton, {}, InText(3));
    EXPECT_EQ(Selected(), "") << "a second click puts the cursor";
}

TEST_F(EntryBoxTest, NotAfterADragNorOnReturnFromAnotherWindow) {
    QTest::mousePress(&entry, Qt::LeftButton, {}, InText(1));
    QTest::mouseMove(&entry, InText(3));
    entry.setSelection(1, 2);
    QTest::mouseRelease(&entry, Qt::LeftButton, {}, InText(3));
    EXPECT_EQ(Selected(), "23");

    QWidget box;
    box.show();
    box.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_FALSE(entry.hasFocus());
    window.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_TRUE(entry.hasFocus());
    EXPECT_EQ(Selected(), "23");
}

} // namespace
} // namespace vantrel
