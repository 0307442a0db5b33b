// The shell around the editor: what readers of the screen hear, small screens and large fonts, ways back, ways in; and
// that entry boxes select their whole text on focus, and only then.
#include "document/frmMain.h"
#include "platform/QtScreen.h"
#include "tests/windows/FrameFixture.h"
#include "views/frmCommInterface.h"
#include "views/frmTargetBoard.h"
#include "widgets/QtScrolledContent.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QScrollBar>

namespace vantrel {
namespace {

QString Heard(QWidget* widget) { return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name); }

/// Controls of any window for which a reader would say nothing; the toolkit's own parts aside.
QStringList Nameless() {
    QStringList found;
    for (QWidget* widget : QApplication::allWidgets()) {
        const bool control = qobject_cast<QLineEdit*>(widget) || qobject_cast<QPlainTextEdit*>(widget) ||
                             qobject_cast<QComboBox*>(widget) || qobject_cast<QTableView*>(widget) ||
                             qobject_cast<QAbstractButton*>(widget);
        const bool own = !widget->objectName().isEmpty() && !widget->objectName().startsWith(QLatin1String("qt_"));
        if (control && own && !widget->isHidden() && Heard(widget).isEmpty()) found += widget->objectName();
    }
    return found;
}

class ShellTest : public FrameTest {
protected:
    [[nodiscard]] QMdiSubWindow& Child() { return *frame->findChild<QMdiArea*>()->subWindowList().front(); }
    [[nodiscard]] frmMain& Editor() { return dynamic_cast<frmMain&>(*Child().widget()); }
};

TEST_F(ShellTest, ReadersHearTheValuesOfPanelsAndClocks) {
    for (QLabel* panel : frame->sbrMainPanels)
        EXPECT_EQ(Heard(panel), panel->text());
    EXPECT_GT(frame->sbrMainPanels[0]->width(), frame->sbrMainPanels[1]->width()) << "room for the message";
    GoOnline();
    frame->mnuViewEventLog->trigger();
    frame->mnuToolsLineMonitor->trigger();
    Within<frmCommInterface>(Qt::Key_V, Qt::Key_C, [](auto&) { EXPECT_EQ(Nameless(), QStringList()); });
    Within<frmTargetBoard>(Qt::Key_V, Qt::Key_T, [](frmTargetBoard& view) {
        for (QLabel* label : {view.lblCurrTime, view.lblRevIdentOnDisk, view.lblRevIdentInPLC[0]})
            EXPECT_EQ(Heard(label), label->text());
        EXPECT_EQ(Nameless(), QStringList());
    });
}

TEST_F(ShellTest, ALargerFontOnASmallScreenHidesNoData) {
    const QFont usual = QApplication::font();
    for (const int points : {16, 20, 32}) {
        QFont large = usual;
        large.setPointSize(points);
        QApplication::setFont(large);
        Start();
        Child().showMaximized();
        frame->sbrMainPanels[0]->setText("System Message:");
        frame->resize(1024, 600);
        QCoreApplication::processEvents();
        ASSERT_EQ(frame->size(), QSize(1024, 600));
        QtFormatGrid& grid = Editor().fgComm[1];
        Editor().tbsComm.setCurrentIndex(1);
        for (const int column : {3, 4, 6, 7}) {
            const int needed = grid.fontMetrics().horizontalAdvance(column % 3 == 0 ? "V34463" : "FFFEH");
            EXPECT_GT(grid.CellRect(1, column).width(), needed) << points << " points, column " << column;
        }
        const auto* children = frame->findChild<QMdiArea*>();
        QWidget* const area = children->viewport();
        const auto placeOf = [&](QWidget& part) { return QRect(part.mapTo(area, QPoint()), part.size()); };
        const QRect messages = placeOf(Editor().fraMessageDisplay);
        const bool whole = area->rect().contains(placeOf(grid)) && area->rect().contains(messages);
        EXPECT_TRUE(points > 20 ? whole || children->verticalScrollBar()->maximum() > 0 : whole) << points << " points";
        EXPECT_LT(placeOf(grid).bottom(), messages.top()) << points << " points";
        EXPECT_GE(grid.viewport()->height(), (points > 16 ? 1 : 4) * grid.RowHeight()) << "the messages give way first";
        EXPECT_TRUE(points > 20 || frame->sbrMainPanels[3]->isVisible()) << points << " points";
        frame->sbrMainPanels[0]->setFixedWidth(1);
        frame->resize(frame->minimumSizeHint().expandedTo({300, 600}));
        EXPECT_FALSE(frame->sbrMainPanels[2]->isVisible()) << "the date gives way to the message";
    }
    QApplication::setFont(usual);
}

TEST_F(ShellTest, ALargerFontLeavesTheButtonsOfTheCommunicationViewOnTheScreen) {
    const QFont usual = QApplication::font();
    for (const bool tooLarge : {false, true}) {
        QFont font = usual;
        if (tooLarge) font.setPointSize(24);
        QApplication::setFont(font);
        StartOnline();
        Within<frmCommInterface>(Qt::Key_V, Qt::Key_C, [&](frmCommInterface& view) {
            EXPECT_EQ(view.findChild<QtScrolledContent*>()->verticalScrollBar()->maximum() > 0, tooLarge);
            EXPECT_TRUE(view.screen()->availableGeometry().contains(view.geometry()));
            EXPECT_TRUE(view.rect().contains(view.cmdOk.geometry()));
        });
    }
    QApplication::setFont(usual);
}

TEST_F(ShellTest, TheGroundBehindTheEditorFollowsTheTheme) {
    const QPalette usual = QApplication::palette();
    QPalette other = usual;
    other.setColor(QPalette::Dark, Qt::magenta);
    QApplication::setPalette(other);
    QCoreApplication::processEvents();
    EXPECT_EQ(frame->findChild<QMdiArea*>()->background().color(), QColor(Qt::magenta));
    QApplication::setPalette(usual);
}

TEST_F(ShellTest, ARowOfTheStatusTabOpensItsSequenceWhileOnline) {
    QtFormatGrid& grid = Editor().fgComm[0];
    const auto enter = [&] { QTest::keyClick(&grid, Qt::Key_Return), Settle(); };
    const auto doubleClick = [&] {
        const QPoint cell = grid.CellRect(6, 2).center() - grid.viewport()->pos();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cell);
        Settle();
    };
    grid.SetCurrentCell(4, 1);
    enter();
    EXPECT_FALSE(QApplication::activeModalWidget()) << "OFFLINE";
    GoOnline();
    std::string opened;
    for (const auto& way : {std::function<void()>(enter), std::function<void()>(doubleClick)}) {
        Activate();
        WhenModal<frmCommInterface> look([&](frmCommInterface& view) {
            opened += view.txtSetup.text().toStdString() + ";";
            view.reject();
        });
        way();
    }
    EXPECT_EQ(opened, "3;5;");
}

TEST_F(ShellTest, TheStatusIsReadBehindALiveViewAndTheFormatOfItsWordsIsRemembered) {
    GoOnline();
    const auto goesOn = [&] {
        const std::uint16_t node = Word(SequenceBase + 2 * SequenceStride) + 1;
        board.PokeWord(SequenceBase + 2 * SequenceStride, node);
        for (int i = 0; i < 10'000 && Editor().fgComm[0].Text(3, 1) != QString::number(node); ++i) {
            // The time between two passes is the host's.
            if (i % 100 == 0) QMetaObject::invokeMethod(&Editor().tmrStatusTab, "timeout");
            QCoreApplication::processEvents();
        }
        return Editor().fgComm[0].Text(3, 1) == QString::number(node);
    };
    Within<frmCommInterface>(Qt::Key_V, Qt::Key_C, [&](frmCommInterface& view) {
        EXPECT_EQ(view.cboNotation.currentText(), QStringLiteral("Decimal"));
        view.cboNotation.setFocus();
        QTest::keyClick(&view.cboNotation, Qt::Key_Down);
        EXPECT_TRUE(goesOn());
    });
    Within<frmTargetBoard>(Qt::Key_V, Qt::Key_T, [&](auto&) { EXPECT_TRUE(goesOn()); });
    StartOnline();
    Within<frmCommInterface>(Qt::Key_V, Qt::Key_C, [](frmCommInterface& view) {
        EXPECT_EQ(view.cboNotation.currentText(), QStringLiteral("Signed"));
    });
}

TEST_F(ShellTest, AnEntryStaysOpenWhileTheChildIsMaximisedAndThereIsAWayBackFromAnIcon) {
    Activate();
    Editor().tbsComm.setCurrentIndex(1);
    Editor().fgComm[1].SetCurrentCell(1, 2);
    Editor().fgComm[1].setFocus();
    QTest::keyClick(&Editor().fgComm[1], Qt::Key_9);
    QTest::keyClicks(&Editor().txtEntry, "99");
    Child().showMaximized();
    QCoreApplication::processEvents();
    EXPECT_TRUE(user.shown.empty()) << "nobody has ended the entry";
    EXPECT_TRUE(Editor().EntryOpen() && Editor().txtEntry.text() == "999" && Editor().txtEntry.hasFocus());
    QTest::keyClick(&Editor().txtEntry, Qt::Key_Escape);
    QTest::keyClick(&Editor().txtEntry, Qt::Key_Escape);
    Child().showMinimized();
    QCoreApplication::processEvents();
    frame->mnuViewMainDisplay->trigger();
    EXPECT_TRUE(!Child().isMinimized() && Editor().isVisible());
}

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
