// Where lines stand on the paper, and when a page is full. Knows the printer only.
#include "report/ReportPages.h"

#include "report/Report.h"
#include "report/TextWrap.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

// Inches.
constexpr double TopMargin = 0.5;
constexpr double BottomMargin = 0.5;
constexpr double ValuesAt = 5.5;
constexpr double RoomBehindSequence = 0.9;
constexpr double GapAboveFooter = 0.1;
/// Positions are sums; a line that fits exactly still fits.
constexpr double Rounding = 1e-6;

PrinterFont Times(double points, bool bold, bool underlined = false) { return {"Times", points, bold, underlined}; }

PrinterFont HeaderFont() { return Times(12, true); }
PrinterFont FooterFont() { return Times(10, false); }

} // namespace

PrinterFont FontOf(ReportStyle style) {
    switch (style) {
    case ReportStyle::Heading:
    case ReportStyle::Title:
        return Times(14, true);
    case ReportStyle::Emphasis:
        return Times(12, true, true);
    case ReportStyle::Large:
        return Times(14, false);
    default:
        return Times(12, false);
    }
}

ReportPages::ReportPages(Printer& printer, std::string header, std::function<std::string()> generalDate)
    : printer_(printer), header_(std::move(header)), generalDate_(std::move(generalDate)) {
    PrintHeader();
}

double ReportPages::RightEdge() const { return printer_.PageWidth() - ReportLeftMargin; }

void ReportPages::PrintHeader() {
    printer_.SetFont(FooterFont());
    footerY_ = printer_.PageHeight() - BottomMargin - printer_.TextHeight("I");
    printer_.SetFont(HeaderFont());
    printer_.MoveTo(ReportLeftMargin, TopMargin);
    for (const std::string& line : Wrapped(ReportLeftMargin, header_)) {
        printer_.MoveTo(ReportLeftMargin, printer_.CurrentY());
        printer_.Print(line);
        EndLine();
    }
    EndLine();
    bodyY_ = printer_.CurrentY();
}

void ReportPages::PrintFooter() {
    printer_.SetFont(FooterFont());
    printer_.MoveTo(ReportLeftMargin, footerY_);
    printer_.Print("Page " + std::to_string(printer_.PageNumber()));
    const std::string date = generalDate_();
    printer_.MoveTo(RightEdge() - printer_.TextWidth(date), footerY_);
    printer_.Print(date);
}

void ReportPages::NextPage() {
    PrintFooter();
    printer_.NewPage();
    PrintHeader();
}

bool ReportPages::FitsAboveFooter(double height) const {
    // A page that has nothing on it yet is as empty as a page can be.
    return printer_.CurrentY() <= bodyY_ || printer_.CurrentY() + height <= footerY_ - GapAboveFooter + Rounding;
}

void ReportPages::BeginLine(ReportStyle style, double at) {
    printer_.SetFont(FontOf(style));
    if (!FitsAboveFooter(printer_.TextHeight("I"))) {
        NextPage();
        printer_.SetFont(FontOf(style));
    }
    printer_.MoveTo(ReportLeftMargin + at, printer_.CurrentY());
}

void ReportPages::EndLine() { printer_.MoveTo(ReportLeftMargin, printer_.CurrentY() + printer_.TextHeight("I")); }

void ReportPages::SkipLine() {
    printer_.SetFont(FontOf(ReportStyle::Line));
    EndLine();
}

std::vector<std::string> ReportPages::Wrapped(double from, std::string_view text) const {
    const double room = RightEdge() - from;
    return WrappedText(text, [&](std::string_view line) { return printer_.TextWidth(line) <= room + Rounding; });
}

void ReportPages::PrintLine(ReportStyle style, double at, std::string_view label, std::string_view text) {
    BeginLine(style, at);
    printer_.Print(label);
    const double from = printer_.CurrentX();
    const std::vector<std::string> lines = Wrapped(from, text);
    printer_.Print(lines.front());
    EndLine();
    for (std::size_t i = 1; i < lines.size(); ++i) {
        BeginLine(style, from - ReportLeftMargin);
        printer_.Print(lines[i]);
        EndLine();
    }
}

std::size_t ReportPages::LineCount(double at, std::string_view label, std::string_view text) {
    printer_.SetFont(FontOf(ReportStyle::Line));
    return Wrapped(ReportLeftMargin + at + printer_.TextWidth(label), text).size();
}

void ReportPages::PrintValue(double at, std::string_view label, std::string_view value) {
    BeginLine(ReportStyle::Line, at);
    printer_.Print(label);
    // Paper too narrow for both must not lose the value.
    const double last = std::min(ReportLeftMargin + ValuesAt, printer_.PageWidth() - printer_.TextWidth(value));
    if (printer_.CurrentX() > last) {
        EndLine();
        BeginLine(ReportStyle::Line, last - ReportLeftMargin);
    }
    printer_.MoveTo(last, printer_.CurrentY());
    printer_.Print(value);
    EndLine();
}

void ReportPages::KeepTogether(std::size_t lines) {
    printer_.SetFont(FontOf(ReportStyle::Line));
    if (!FitsAboveFooter(static_cast<double>(lines) * printer_.TextHeight("I"))) NextPage();
}

bool ReportPages::BreakPageWhenFull() {
    const double line = printer_.TextHeight("I");
    if (printer_.CurrentY() + RoomBehindSequence + line <= printer_.PageHeight()) return false;
    NextPage();
    return true;
}

void ReportPages::End() {
    PrintFooter();
    printer_.EndDocument();
}

} // namespace vantrel
