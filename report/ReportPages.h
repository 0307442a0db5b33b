// The pages of the report: lines, header, footer and page breaks, whatever the lines say. Knows the printer only.
#pragma once

#include "platform/Printer.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// The font styles of the report, all in one typeface.
enum class ReportStyle { Line = 1, Heading = 2, Emphasis = 3, Large = 4, Title = 5 };

[[nodiscard]] PrinterFont FontOf(ReportStyle style);

/// Positions are inches from the left margin. No line is printed into the footer or off the page: what does not fit
/// starts a new page, with the footer of the old one and the header of the new one.
class ReportPages {
public:
    /// Prints the first page's header.
    ReportPages(Printer& printer, std::string header, std::function<std::string()> generalDate);

    /// One line; `text` is wrapped to as many as it needs, which all begin where its first one does.
    void PrintLine(ReportStyle style, double at, std::string_view label, std::string_view text = {});
    /// One line with the value in the column of the values.
    void PrintValue(double at, std::string_view label, std::string_view value);
    void SkipLine();

    /// Begins a new page when so many lines of style Line do not fit above the footer any more.
    void KeepTogether(std::size_t lines);
    /// How many lines PrintLine would print in style Line.
    [[nodiscard]] std::size_t LineCount(double at, std::string_view label, std::string_view text);
    /// Whether the report's page-break check began a new page: 0.9 in and one line have to be left on the paper.
    bool BreakPageWhenFull();
    /// The last page's footer and the end of the document.
    void End();

private:
    void PrintHeader();
    void PrintFooter();
    void NextPage();
    void BeginLine(ReportStyle style, double at);
    void EndLine();
    [[nodiscard]] bool FitsAboveFooter(double height) const;
    [[nodiscard]] std::vector<std::string> Wrapped(double from, std::string_view text) const;
    [[nodiscard]] double RightEdge() const;

    Printer& printer_;
    std::string header_;
    std::function<std::string()> generalDate_;
    double footerY_ = 0;
    double bodyY_ = 0; ///< Where the first line below the header stands.
};

} // namespace vantrel
