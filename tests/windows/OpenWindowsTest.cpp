// Every window that can be open beside the others, while the line fails in each way that it can, one after the other:
// what the program needs stays what it was. 12 seconds of virtual time each; an hour for all with VANTREL_LONG=1.
#include "link/frmLineMonitor.h"
#include "tests/windows/EditorFixture.h"
#include "views/frmCommInterface.h"
#include "views/frmEventLog.h"
#include "views/frmPlot.h"

#include <QPixmapCache>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace vantrel {
namespace {

using namespace std::chrono_literals;

/// Bytes that were allocated and not given back, and open descriptors; nothing where the host does not tell.
std::pair<std::size_t, std::ptrdiff_t> Held() {
#ifdef __GLIBC__
    return {mallinfo2().uordblks + mallinfo2().hblkhd,
            std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {})};
#else
    return {};
#endif
}

struct OpenWindowsTest : EditorTest {
    OpenWindowsTest() : EditorTest(LinePacing::LineSpeed) {}
};

TEST_F(OpenWindowsTest, NeedNoMoreAtTheEndOfEachFaultThanAfterAQuarterOfIt) {
    if (Held().first == 0) GTEST_SKIP() << "This host, or the sanitizer, does not tell what is allocated.";
    const int seconds = std::getenv("VANTREL_LONG") ? 330 : 12; // NOLINT(concurrency-mt-unsafe)
    GoOnline();
    frame->mnuViewEventLog->trigger();
    frame->mnuToolsLineMonitor->trigger();
    auto& events = Opened<frmEventLog>();
    auto& lines = Opened<frmLineMonitor>();
    Within<frmCommInterface>(Qt::Key_V, Qt::Key_C, [&](frmCommInterface& view) {
        view.cmdPlot.click();
        auto& plot = dynamic_cast<frmPlot&>(*view.findChild<QDialog*>(QStringLiteral("frmPlot")));
        // Each ten seconds the line fails for two, and each hundred until the link has failed.
        const auto pass = [&](FaultKind kind, int second) {
            if (second % 10 == 3) board.AddFault({.kind = kind});
            if (second % 10 == 5 && (second % 100 != 5 || !frame->Link().OnlineMode())) {
                board.ClearFaults();
                port.MendLine();
                view.cmdGoOnline.click();
            }
            for (int round = 0; round < 200; ++round, clock.Advance(5ms)) {
                QCoreApplication::processEvents();
                for (QTimer* timer : {&frame->tmrBackgroungUpdate, &editor->tmrStatusTab, &events.tmrFollow,
                                      &lines.tmrFollow, &plot.tmrDraw, &view.tmrFade, &view.tmrNotRefreshed}) {
                    if (round % 50 == 0) QMetaObject::invokeMethod(timer, "timeout");
                }
            }
        };
        // Without what is kept for the user, or by the toolkit to draw it again, within bounds.
        const auto needed = [&] {
            lines.cmdClear->click();
            plot.cmdClear.click();
            user.shown.clear();
            line.bytes = {};
            QPixmapCache::clear();
            constexpr std::size_t row = 16; // Of the log's table, in the toolkit.
            return Held().first -
                   static_cast<std::size_t>(events.grdRows->model()->rowCount()) * (sizeof(HistoryEntry) + row);
        };
        // What is made once, and the last three minutes of each sequence.
        for (int second = 0; second < 200; ++second)
            pass(FaultKind::NoAnswer, second);
        for (const FaultName& fault : FaultNames()) {
            const std::size_t received = board.ReceivedBytes();
            std::size_t early = 0;
            const auto descriptors = Held().second;
            for (int second = 0; second < seconds + 6; ++second) {
                if (second == seconds / 4) early = needed();
                pass(fault.kind, second);
            }
            const std::size_t late = needed();
            std::printf("%s, %d s: %zu bytes taken by the board; after a quarter and at the end %zu and %zu bytes, "
                        "%td and %td descriptors\n",
                        fault.name.data(), seconds, board.ReceivedBytes() - received, early, late, descriptors,
                        Held().second);
            EXPECT_LE(late, early + 128 * 1024) << fault.name;
            EXPECT_LE(Held().second, descriptors) << fault.name;
            EXPECT_GT(board.ReceivedBytes() - received, static_cast<std::size_t>(seconds) * 50) << fault.name;
        }
    });
}

} // namespace
} // namespace vantrel
