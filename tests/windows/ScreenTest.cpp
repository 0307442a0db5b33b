// Entry boxes select their whole text on focus, and only then.
#include "platform/QtScreen.h"

#include <QHBoxLayout>
#include <QTest>

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(EntryBoxTest, ByKeyByProgramAndByClickButNotAfterADragNorOnReturnFromAnotherWindow) {
    QWidget window;
    QHBoxLayout row(&window);
    QLineEdit other;
    QLineEdit entry(QStringLiteral("123456"));
    row.addWidget(&other);
    row.addWidget(&entry);
    entry.setMinimumWidth(200);
    SelectAllOnFocus(entry);
    window.show();
    window.activateWindow();
    const auto selected = [&] {
        QCoreApplication::processEvents();
        return entry.selectedText().toStdString();
    };
    const auto inText = [&](int characters) {
        return QPoint(entry.fontMetrics().horizontalAdvance(entry.text().left(characters)) + 6, entry.height() / 2);
    };
    const std::function<void()> ways[] = {[&] { QTest::keyClick(&other, Qt::Key_Tab); },
                                          [&] { entry.setFocus(Qt::OtherFocusReason); },
                                          [&] { QTest::mouseClick(&entry, Qt::LeftButton, {}, inText(3)); }};
    for (const auto& way : ways) {
        other.setFocus();
        entry.deselect();
        way();
        EXPECT_EQ(selected(), "123456");
    }
    QTest::mouseClick(&entry, Qt::LeftButton, {}, inText(3));
    EXPECT_EQ(selected(), "") << "a second click puts the cursor";
    other.setFocus();
    QTest::mousePress(&entry, Qt::LeftButton, {}, inText(1));
    QTest::mouseMove(&entry, inText(3));
    entry.setSelection(1, 2);
    QTest::mouseRelease(&entry, Qt::LeftButton, {}, inText(3));
    EXPECT_EQ(selected(), "23");
    QWidget box;
    box.show();
    box.activateWindow();
    EXPECT_EQ(selected(), "23");
    ASSERT_FALSE(entry.hasFocus());
    window.activateWindow();
    EXPECT_EQ(selected(), "23");
    ASSERT_TRUE(entry.hasFocus());
}

} // namespace
} // namespace vantrel
