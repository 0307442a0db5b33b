#include "platform/QtPrinter.h"

#include "platform/QtText.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"

#include <QBuffer>
#include <QDateTime>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLibrary>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <ostream>
#include <span>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

/// Of a PDF file: a sixtieth of a point, so that no rounding shows.
constexpr int DotsPerInch = 4320;
constexpr double PointsPerInch = 72;
/// Line advance as a multiple of the font's size. Some typefaces ask for far more, on account of accents over capitals
/// of other scripts.
constexpr double MostLineSpacing = 1.2;

QFont HostFont(const PrinterFont& font) {
    QFont chosen;
    // Not every host has every typeface; these are the same one under other names, and the hint finds the nearest.
    chosen.setFamilies({Text(font.name), QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"),
                        QStringLiteral("Nimbus Roman"), QStringLiteral("DejaVu Serif"), QStringLiteral("serif")});
    chosen.setStyleHint(QFont::Times);
    chosen.setHintingPreference(QFont::PreferNoHinting);
    chosen.setPointSizeF(font.points);
    chosen.setBold(font.bold);
    chosen.setUnderline(font.underlined);
    return chosen;
}

/// On the whole of the paper of any of Qt's devices that have pages. The job is kept until it is complete: not every
/// device takes a part of one back.
class PagedPrinter : public Printer {
public:
    [[nodiscard]] double PageWidth() const override { return PaperSize().width(); }
    [[nodiscard]] double PageHeight() const override { return PaperSize().height(); }
    [[nodiscard]] int PageNumber() const override { return static_cast<int>(pages_.size()); }
    void SetFont(const PrinterFont& font) override { font_ = QFont(HostFont(font), &device_); }
    [[nodiscard]] double TextHeight(std::string_view /*text*/) const override {
        const double most = MostLineSpacing * font_.pointSizeF() / PointsPerInch;
        return std::min(Metrics().lineSpacing() / device_.logicalDpiY(), most);
    }
    [[nodiscard]] double TextWidth(std::string_view text) const override {
        return Metrics().horizontalAdvance(Text(text)) / device_.logicalDpiX();
    }
    void EndDocument() override {
        QPainter painter;
        Require(painter.begin(&device_), "cannot start the job");
        for (std::size_t page = 0; page < pages_.size(); ++page) {
            Require(page == 0 || device_.newPage(), "cannot begin a page");
            for (const Line& line : pages_[page]) {
                painter.setFont(line.font);
                painter.drawText(line.start, line.text);
            }
        }
        Require(painter.end(), "has not taken the job");
    }

protected:
    PagedPrinter(QPagedPaintDevice& device, std::string name) : device_(device), name_(std::move(name)) {}

    void Require(bool done, const std::string& problem) const {
        if (!done) throw RuntimeError(ErrorNumber::PrinterError, "The printer \"" + name_ + "\" " + problem + ".");
    }

private:
    struct Line {
        QPointF start; ///< On the base line, in dots.
        QFont font;
        QString text;
    };

    [[nodiscard]] QSizeF PaperSize() const { return device_.pageLayout().fullRect(QPageLayout::Inch).size(); }
    [[nodiscard]] QFontMetricsF Metrics() const { return QFontMetricsF(font_, &device_); }
    void Draw(std::string_view text, double x, double y) override {
        const QPointF corner(x * device_.logicalDpiX(), y * device_.logicalDpiY());
        pages_.back().push_back({corner + QPointF(0, Metrics().ascent()), font_, Text(text)});
    }
    void BeginPage() override { pages_.emplace_back(); }

    QPagedPaintDevice& device_;
    std::string name_;
    QFont font_;
    std::vector<std::vector<Line>> pages_ = std::vector<std::vector<Line>>(1);
};

/// Why the print system has refused the job that this thread has just handed over; empty when it has taken it, or where
/// it tells at once. The toolkit does not ask.
std::string SpoolerRefusal() {
    constexpr int firstError = 0x0400;
    QLibrary spooler(QStringLiteral("cups"), 2);
    const auto lastError = reinterpret_cast<int (*)()>(spooler.resolve("cupsLastError"));
    const auto lastText = reinterpret_cast<const char* (*)()>(spooler.resolve("cupsLastErrorString"));
    if (!lastError || !lastText || lastError() < firstError) return {};
    const char* given = lastText();
    std::string text = given ? given : "";
    // The sentence around it ends by itself.
    while (text.ends_with('.'))
        text.pop_back();
    return text.empty() ? "no reason was given" : text;
}

struct PaperDevice {
    explicit PaperDevice(const QPrinterInfo& printer) : device(printer, QPrinter::HighResolution) {
        // Else the toolkit takes the paper that is usual where the host stands.
        if (const QPageSize own = printer.defaultPageSize(); own.isValid()) device.setPageSize(own);
    }
    QPrinter device;
};

class HostPrinter final : private PaperDevice, public PagedPrinter {
public:
    HostPrinter(const QPrinterInfo& printer, const std::string& title)
        : PaperDevice(printer), PagedPrinter(device, printer.printerName().toStdString()) {
        device.setDocName(Text(title));
        device.setFullPage(true);
    }
    void EndDocument() override {
        PagedPrinter::EndDocument();
        const std::string refusal = SpoolerRefusal();
        Require(refusal.empty(), "has not taken the job: " + refusal);
        Require(device.printerState() != QPrinter::Error, "reports an error");
    }
};

struct PdfDevice {
    QBuffer buffer;
    QPdfWriter device{&buffer};
};

using BytesSink = std::function<void(std::span<const std::uint8_t>)>;

class FilePrinter final : private PdfDevice, public PagedPrinter {
public:
    FilePrinter(BytesSink sink, const std::string& title) : PagedPrinter(device, "PDF"), sink_(std::move(sink)) {
        buffer.open(QIODevice::WriteOnly);
        device.setTitle(Text(title));
        device.setCreator(QStringLiteral("VANTREL"));
        device.setResolution(DotsPerInch);
        const bool metric = QLocale::system().measurementSystem() != QLocale::ImperialUSSystem;
        device.setPageSize(QPageSize(metric ? QPageSize::A4 : QPageSize::Letter));
        device.setPageMargins(QMarginsF());
    }
    void EndDocument() override {
        PagedPrinter::EndDocument();
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(buffer.data().constData());
        sink_(std::span(bytes, static_cast<std::size_t>(buffer.size())));
    }

private:
    BytesSink sink_;
};

/// A time format without its time zone: neither short nor long names of zones belong on paper.
QString WithoutZone(const QString& format) {
    QString kept;
    bool quoted = false;
    for (const QChar character : format) {
        if (character == QLatin1Char('\'')) quoted = !quoted;
        const bool zone =
            character == QLatin1Char('t') || character == QLatin1Char('(') || character == QLatin1Char(')');
        if (quoted || !zone) kept += character;
    }
    return kept.simplified();
}

} // namespace

std::string DefaultPrinterName() { return QPrinterInfo::defaultPrinterName().toStdString(); }

std::vector<std::string> PrinterNames() {
    std::vector<std::string> names;
    for (const QString& name : QPrinterInfo::availablePrinterNames())
        names.push_back(name.toStdString());
    return names;
}

std::unique_ptr<Printer> PaperPrinter(const std::string& name, const std::string& title) {
    const QPrinterInfo printer = QPrinterInfo::printerInfo(Text(name));
    // Without one Qt would write a file of its own choice.
    if (printer.isNull()) throw RuntimeError(ErrorNumber::PrinterError, "There is no printer \"" + name + "\".");
    return std::make_unique<HostPrinter>(printer, title);
}

std::unique_ptr<Printer> PdfPrinter(const std::filesystem::path& file, const std::string& title) {
    return std::make_unique<FilePrinter>(
        [file](std::span<const std::uint8_t> bytes) {
            ReplaceFile(file, bytes, OldTail::Drop, [](const std::string&) {});
        },
        title);
}

std::unique_ptr<Printer> PdfStreamPrinter(std::ostream& out, const std::string& title) {
    return std::make_unique<FilePrinter>(
        [&out](std::span<const std::uint8_t> bytes) {
            out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
            if (!out.flush()) {
                throw RuntimeError(ErrorNumber::PathFileAccess, "The report could not be written to standard output.");
            }
        },
        title);
}

std::string GeneralDate(std::chrono::local_seconds time) {
    // Seconds of local time taken as if they were universal, so that no zone moves them.
    const QDateTime shown = QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
    const QLocale host = QLocale::system();
    return (host.toString(shown.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
            host.toString(shown.time(), WithoutZone(host.timeFormat(QLocale::LongFormat))))
        .toStdString();
}

void PrintWithoutScreen() {
#ifndef Q_OS_WIN
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
}

} // namespace vantrel
