// A comparison's lines, on the pages of the report.
#include "report/ComparisonPages.h"

#include "report/ReportPages.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace vantrel {

namespace {

constexpr double Indent = 0.25; ///< Inches.

std::string HeadingOf(const Difference& difference) {
    return difference.index == StatusStackIndex ? "Set-up" : "Sequence " + std::to_string(difference.sequence);
}

std::string SidesOf(const Difference& difference) {
    return difference.here + " here, " + (difference.doubtful ? "not read clearly" : difference.there) + " there";
}

} // namespace

void PrintComparison(const ComparisonReport& report, Printer& printer, std::function<std::string()> generalDate) {
    ReportPages pages(printer, ComparisonTitle, std::move(generalDate));
    pages.PrintLine(ReportStyle::Line, 0, "Here:  ", report.here);
    pages.PrintLine(ReportStyle::Line, 0, "There:  ", report.there);
    pages.PrintLine(ReportStyle::Line, 0, "Compared:  ", report.date);
    pages.SkipLine();
    std::optional<std::string> heading;
    for (const Difference& difference : report.differences) {
        if (heading != HeadingOf(difference)) {
            pages.KeepTogether(2);
            heading = HeadingOf(difference);
            pages.PrintLine(ReportStyle::Emphasis, 0, *heading);
        }
        pages.PrintLine(ReportStyle::Line, Indent, difference.Field() + ":  ", SidesOf(difference));
    }
    if (!report.remark.empty()) {
        pages.SkipLine();
        pages.PrintLine(ReportStyle::Line, 0, "", report.remark);
    } else if (report.differences.empty()) {
        pages.PrintLine(ReportStyle::Line, 0, "", "No differences.");
    }
    pages.End();
}

} // namespace vantrel
