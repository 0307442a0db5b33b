// The desktop program: reads the command line, makes the host's clock and serial port, and hands over to the main
// frame.
#include "app/Program.h"
#include "app/ReportFile.h"
#include "app/frmMDIMain.h"
#include "link/ByteTrace.h"
#include "link/PortChoice.h"
#include "platform/HostSerialPort.h"
#include "platform/QtPrinter.h"
#include "platform/QtScreen.h"
#include "platform/RuntimeError.h"
#include "platform/SerialDevices.h"
#include "platform/SystemClock.h"
#include "platform/Terminal.h"
#include "platform/UsageError.h"
#include "simulator/SimulatedPort.h"
#include "text/PathText.h"
#include "text/PrintableText.h"

#include <CLI/CLI.hpp>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace {

using namespace vantrel;

/// One handler around the event dispatch: what no procedure traps is shown, and the program goes on with nothing lost.
class Application final : public QApplication {
public:
    Application(int& argc, char** argv) : QApplication(argc, argv) {}
    void SetFrame(frmMDIMain* frame) { frame_ = frame; }
    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (...) {
            if (!frame_) throw;
            frame_->ShowUntrappedError();
            return false;
        }
    }

private:
    frmMDIMain* frame_ = nullptr;
};

// Exit codes, as of vantrelctl.
constexpr int WrongUsage = 2;
constexpr int FileError = 4;

struct Options {
    std::string file;
    std::string programFolder;
    std::string trace;
    bool decode = false;
    std::string report;
    std::string port;
    bool simulatedBoard = false;
};

/// Where the program was started from: a terminal, on which texts are written, or a desktop, where only a box is seen.
class Starter {
public:
    void Tell(const std::string& text) const {
        if (text.empty()) return;
        // A box would hold up a script that prints reports, and needs the application.
        if (hasTerminal_ || !QApplication::instance()) {
            std::cerr << text;
            return;
        }
        QMessageBox::information(nullptr, QStringLiteral("VANTREL"), QString::fromStdString(text));
    }
    [[nodiscard]] bool HasTerminal() const { return hasTerminal_; }

private:
    bool hasTerminal_ = JoinTerminal();
};

/// The exit code when the program ends here (help, or a wrong option); nothing when it goes on.
std::optional<int> Read(Options& options, const std::vector<std::string>& arguments, const Starter& starter) {
    CLI::App line("VANTREL sets up the K5216-505 network communication board.", "vantrel");
    line.add_option("FILE", options.file, "The set-up file (.sdt) to open, or a text file (.vtl) to import")
        ->type_name("");
    line.add_option("--port", options.port,
                    "The port of this run: a number (1 is COM1), a device\n(" + SerialDeviceExample() +
                        "), a board behind a network\n(rfc2217://host:port or socket://host:port), or\n"
                        "\"simulated\"; else the stored one")
        ->type_name("PORT");
    line.add_flag("--simulated-board", options.simulatedBoard, "The same as --port simulated")->excludes("--port");
    line.add_option("--trace", options.trace,
                    "Write every byte sent and received, with its time, to\n"
                    "this file")
        ->type_name("FILE");
    line.add_flag("--decode", options.decode, "Write into the trace what the bytes mean:\n\"read B8176 = 0\"")
        ->needs("--trace");
    line.add_option("--report", options.report,
                    "Print the report of FILE into this PDF file, without\n"
                    "any window")
        ->type_name("OUT");
    line.add_option("--program-folder", options.programFolder,
                    "Where the program's folders Support, Help and samples are\n"
                    "(else VANTREL_FOLDER, else beside the program)")
        ->type_name("DIR");
    line.set_version_flag("--version", "vantrel " + VersionNumber());
    line.get_formatter()->column_width(26);
    line.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "vantrel: " + PrintableText(error.what(), Layout::Keep) + "\nSee vantrel --help.\n";
    });
    line.footer("Examples:\n"
                "  vantrel plant.sdt\n"
                "  vantrel --simulated-board\n"
                "  vantrel --port " +
                SerialDeviceExample() +
                "\n"
                "  vantrel --report plant.pdf plant.sdt\n"
                "\n"
                "Without a display use vantrelctl, its console twin.\n"
                "\n"
                "Exit codes:\n"
                "  0  done\n"
                "  2  wrong usage, or no display\n"
                "  4  a file could not be read or written\n");
    try {
        line.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend() - 1));
    } catch (const CLI::ParseError& error) {
        std::ostringstream problem;
        const int code = line.exit(error, starter.HasTerminal() ? std::cout : problem, problem);
        starter.Tell(problem.str());
        return code == 0 ? 0 : WrongUsage;
    }
    return std::nullopt;
}

ProgramFolder FolderFor(const Options& options) {
    if (options.programFolder.empty()) return ProgramFolder::Find(std::nullopt);
    return ProgramFolder::Find(PathFromUtf8(options.programFolder));
}

/// Help and version, on a terminal, and the report need no display, unlike everything else.
bool NeedsNoDisplay(const std::vector<std::string>& arguments, const Starter& starter) {
    return std::any_of(arguments.begin(), arguments.end(), [&](const std::string& argument) {
        const bool asks = argument == "--help" || argument == "-h" || argument == "--version";
        return (asks && starter.HasTerminal()) || argument.starts_with("--report");
    });
}

/// All arguments but those that Qt has taken for itself, which it has taken out of `argv` ("-style fusion").
std::vector<std::string> LeftByQt(const std::vector<std::string>& all, const std::vector<char*>& before, int argc,
                                  char** argv) {
    if (all.size() != before.size()) return all;
    std::vector<std::string> left;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (std::find(argv, argv + argc, before[i]) != argv + argc) left.push_back(all[i]);
    }
    return left;
}

/// Without a name: the stored number, whatever it is.
PortChoice PortOf(const Options& options, const ProgramFolder& folder) {
    if (options.simulatedBoard) return {.kind = PortChoice::Kind::Simulated};
    if (options.port.empty()) return {.kind = PortChoice::Kind::Number};
    return ReadPortChoice(options.port, PortRangeOf(folder.SupportFolder()));
}

std::unique_ptr<SerialPort> MakePort(const PortChoice& choice, SimulatedBoard& board, Clock& clock,
                                     const ProgramFolder& folder) {
    switch (choice.kind) {
    case PortChoice::Kind::Number:
        return std::make_unique<HostSerialPort>(clock, folder.SupportFolder());
    case PortChoice::Kind::Device:
        return std::make_unique<HostSerialPort>(clock, choice.device);
    default:
        return std::make_unique<SimulatedPort>(board, clock, LinePacing::LineSpeed);
    }
}

/// Of a port that stands for one thing whatever its number says.
std::string NameOf(const PortChoice& choice) {
    if (choice.kind == PortChoice::Kind::Number) return {};
    return choice.kind == PortChoice::Kind::Device ? choice.device : "the simulated board";
}

int PrintReportOf(const Options& options, int argc, char** argv) {
    if (options.file.empty()) {
        std::cerr << "vantrel: --report needs the set-up file to print: vantrel --report plant.pdf plant.sdt\n";
        return WrongUsage;
    }
    if (options.report == "-" && StandardOutputIsTerminal()) {
        std::cerr << "vantrel: a PDF file is no text for a terminal. Lead standard output into a file, or name one.\n";
        return WrongUsage;
    }
    UseStandardStreamsForBytes();
    PrintWithoutScreen();
    const QApplication application(argc, argv);
    const SystemClock clock;
    return WriteReportFile({.setupFile = PathFromUtf8(options.file),
                            .reportFile = PathFromUtf8(options.report),
                            .makePrinter =
                                [](const std::filesystem::path& file, const std::string& title) {
                                    return file == "-" ? PdfStreamPrinter(std::cout, title) : PdfPrinter(file, title);
                                },
                            .generalDate = GeneralDate,
                            .in = &std::cin},
                           clock, std::cerr);
}

/// From the event loop, so that whatever goes wrong meets the last handler, and when the window manager has given the
/// window its place, so that a box stands over it. One that never comes up is not waited for.
void WhenInPlace(QWidget& window, int tries, const std::function<void()>& act) {
    constexpr int often = 20;
    constexpr int settling = 100;
    const QWindow* handle = window.windowHandle();
    if (tries == 0 || (handle && handle->isExposed())) {
        QTimer::singleShot(settling, &window, act);
    } else {
        QTimer::singleShot(often, &window, [&window, tries, act] { WhenInPlace(window, tries - 1, act); });
    }
}

/// False when the trace cannot be written there, which the user has been told.
bool BeginTrace(ByteTrace& trace, const std::string& file, const Starter& starter) {
    if (HoldsSomethingElse(PathFromUtf8(file))) {
        starter.Tell("vantrel: \"" + file + "\" is there already and no trace. Give the trace another name.\n");
        return false;
    }
    try {
        trace.WriteTo(file, std::cout);
        return true;
    } catch (const RuntimeError& error) {
        starter.Tell("vantrel: " + error.Description() + "\n");
        return false;
    }
}

} // namespace

int main(int argc, char** argv) {
    const Starter starter;
    const std::vector<std::string> arguments = CommandLineArguments(argc, argv);
    const std::vector<char*> before(argv, argv + argc);
    Options options;
    if (NeedsNoDisplay(arguments, starter)) {
        const auto ended = Read(options, arguments, starter);
        return ended ? *ended : PrintReportOf(options, argc, argv);
    }
    RequireScreen(WrongUsage, "vantrel: there is no display for its windows. Without one, use vantrelctl.\n");
    Application application(argc, argv);
    ScreenFound();
    MakeLinksReadable();
    Application::setApplicationName(QStringLiteral("VANTREL"));
    if (const auto ended = Read(options, LeftByQt(arguments, before, argc, argv), starter)) return *ended;

    SystemClock clock;
    const ProgramFolder folder = FolderFor(options);
    PortChoice choice;
    try {
        choice = PortOf(options, folder);
    } catch (const UsageError& error) {
        starter.Tell("vantrel: " + error.Description() + '\n');
        return WrongUsage;
    }
    SimulatedBoard board(BoardStart(clock));
    const std::unique_ptr<SerialPort> port = MakePort(choice, board, clock, folder);
    ByteTrace trace;

    frmMDIMain frame(folder, clock, *port, NameOf(choice));
    if (options.simulatedBoard || !options.port.empty())
        frame.Link().SetPortOverride(OverrideFor(choice, std::nullopt));
    application.SetFrame(&frame);
    if (!options.trace.empty()) {
        if (!BeginTrace(trace, options.trace, starter)) return FileError;
        if (options.decode) trace.Decode();
        frame.Link().SetTrafficLog(&trace);
        if (options.trace != "-") frame.SetTrace(PathFromUtf8(options.trace), [&trace] { trace.Flush(); });
    }
    frame.show();
    WhenInPlace(frame, 100, [&] { frame.OpenAtStart(PathFromUtf8(options.file)); });
    const int code = Application::exec();
    application.SetFrame(nullptr);
    frame.Link().SetTrafficLog(nullptr);
    if (const std::string problem = trace.Finish(); !problem.empty()) {
        starter.Tell("vantrel: " + problem + "\n");
        return FileError;
    }
    return code;
}
