// Lets the monkey loose on the windows: monkey DATA [ACTIONS [SEED]], or MONKEY_ACTIONS and MONKEY_SEED in the
// environment. In rounds of a thousand actions, each by a seed of its own, on a fresh program and board, and followed
// by what must hold of any program at rest. MONKEY_ALOUD=1 says every action. DATA holds the program's help, support,
// ...
#include "tests/monkey/Cage.h"
#include "tests/monkey/Monkey.h"

#include <QApplication>
#include <QClipboard>
#include <QPixmapCache>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

using namespace vantrel;
using namespace vantrel::monkey;

namespace {

std::string faults; ///< Of the present round, a line each.
QtMessageHandler usual = nullptr;

void OnMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    // What this screen, which is not there, has no use for.
    const bool ofScreen = text.startsWith(QLatin1String("This plugin does not support"));
    if (type == QtFatalMsg) usual(type, context, text);
    if (type != QtDebugMsg && type != QtInfoMsg && !ofScreen) faults += "Qt: " + text.toStdString() + "\n";
}

class Application final : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& error) {
            faults += std::string("left a procedure: ") + error.what() + "\n";
            return false;
        }
    }
};

constexpr int RoundLength = 1000;

struct Totals {
    int actions = 0;
    int failed = 0;
    Usage first; ///< After the first round.
    Usage last;
};

/// What is wrong with the program after `actions` actions by `seed`; empty when nothing.
std::string PlayRound(const std::filesystem::path& folder, std::uint32_t seed, int actions) {
    faults.clear();
    // No round hears of the one before.
    QApplication::clipboard()->clear();
    Chance chance(seed);
    std::string last;
    {
        Stage stage(folder / "round", folder / "data", chance);
        Monkey* monkey = nullptr;
        Watchdog watchdog(60, [&] {
            return "Seed " + std::to_string(seed) + ", the last of:\n" + (monkey ? monkey->LastActions() : "");
        });
        Monkey user(stage, chance, [&] { watchdog.Alive(); });
        monkey = &user;
        user.aloud = std::getenv("MONKEY_ALOUD") != nullptr; // NOLINT(concurrency-mt-unsafe): no other thread
        user.Begin(actions);
        while (true) {
            QApplication::exec();
            if (user.Ended() && stage.frame->isVisible()) break;
            // The user has left the program.
            stage.Start();
        }
        faults += user.Trouble();
        if (faults.empty()) faults += stage.Faults([&] { return user.Pump(); });
        if (!faults.empty()) last = "after\n" + user.LastActions();
        stage.End();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) faults += std::string("left behind: ") + window->metaObject()->className() + "\n";
    }
    std::filesystem::remove_all(folder / "round");
    // The toolkit keeps up to 10 MB of them.
    QPixmapCache::clear();
    return faults.empty() ? "" : faults + last;
}

void Play(const Cage& cage, int actions, std::uint32_t seed, Totals& totals) {
    constexpr int enough = 5;
    for (; totals.actions < actions && totals.failed < enough; ++seed) {
        const int length = std::min(RoundLength, actions - totals.actions);
        const std::string wrong = PlayRound(cage.Folder(), seed, length);
        if (!wrong.empty()) {
            ++totals.failed;
            std::printf("FAULT, repeated by MONKEY_SEED=%u MONKEY_ACTIONS=%d: %s\n", seed, length, wrong.c_str());
            std::fflush(stdout);
        }
        totals.last = UsageNow();
        if (totals.actions == 0) totals.first = totals.last;
        totals.actions += length;
    }
}

int NumberOf(const char* argument, const char* variable, int otherwise) {
    const char* text = argument ? argument : std::getenv(variable); // NOLINT(concurrency-mt-unsafe): no other thread
    return text ? std::max(std::atoi(text), 1) : otherwise;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fprintf(stderr, "usage: monkey DATA [ACTIONS [SEED]]\n"), 2;
    const int actions = NumberOf(argc > 2 ? argv[2] : nullptr, "MONKEY_ACTIONS", 5000);
    const int seed = NumberOf(argc > 3 ? argv[3] : nullptr, "MONKEY_SEED", 1);
    const bool aloud = std::getenv("MONKEY_ALOUD") != nullptr; // NOLINT(concurrency-mt-unsafe): no other thread
    const Cage cage(argv[1]);
    if (aloud) ::setenv("MONKEY_ALOUD", "1", 1);
    if (const std::string path = Cage::WrittenOutside(); !path.empty() && cage.IsSandboxed())
        return std::printf("the sandbox lets through %s\n", path.c_str()), 1;
    usual = qInstallMessageHandler(OnMessage);
    const Application application(argc, argv);
    Totals totals;
    Play(cage, actions, static_cast<std::uint32_t>(seed), totals);
    std::printf(
        "%d actions %s, %d rounds with faults; after the first round and at the end: %.1f and %.1f MB allocated, "
        "%.1f and %.1f MB resident, %d and %d descriptors\n",
        totals.actions, cage.Text().c_str(), totals.failed, totals.first.allocated, totals.last.allocated,
        totals.first.resident, totals.last.resident, totals.first.descriptors, totals.last.descriptors);
    std::printf("%d of them ONLINE; met:", Monkey::metOnline);
    for (const std::string& window : Monkey::windowsMet)
        std::printf(" %s", window.c_str());
    std::printf("\n");
    constexpr double room = 8; // MB: what the toolkit and the heap keep for later.
    const bool grows =
        totals.last.allocated > totals.first.allocated + room || totals.last.descriptors > totals.first.descriptors;
    if (grows) std::printf("It grows.\n");
    return totals.failed > 0 || grows ? 1 : 0;
}
