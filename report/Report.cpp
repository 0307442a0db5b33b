// The report's body, line by line. Knows the record, the field table and the pages.
#include "report/Report.h"

#include "document/ValueDisplay.h"
#include "report/ReportPages.h"

#include <cstddef>

namespace vantrel {

namespace {

// Inches from the left margin.
constexpr double HeadingAt = 0.25;
constexpr double LineAt = 0.5;
constexpr double FieldAt = 0.75;

constexpr const char* DescriptionLabel = "Node Description:  ";

void PrintStatusStack(ReportPages& pages, const Configuration& record) {
    pages.PrintLine(ReportStyle::Title, 0, "K5216-505 Communication Parameter List");
    pages.SkipLine();
    pages.PrintLine(ReportStyle::Heading, HeadingAt, "A. Status Stack Address");
    pages.PrintValue(LineAt,
                     "  1. Ti-505 Communications Status Stack Address: ", DisplayValue(record, StatusStackIndex));
    pages.SkipLine();
    pages.PrintLine(ReportStyle::Heading, HeadingAt, "B. Configuration Parameters:");
}

void PrintSequence(ReportPages& pages, const Configuration& record, std::size_t sequence) {
    const std::string description = record.NodeDescription(sequence);
    const std::size_t descriptionLines = pages.LineCount(LineAt, DescriptionLabel, description);
    pages.KeepTogether(1 + descriptionLines + FieldCount);
    pages.PrintLine(ReportStyle::Line, LineAt, "Sequence Number:  ", std::to_string(sequence));
    pages.PrintLine(ReportStyle::Line, LineAt, DescriptionLabel, description);
    for (const FieldDescription& field : FieldTable()) {
        pages.PrintValue(FieldAt, field.reportLabel, DisplayValue(record, ValueIndex(sequence, field.field)));
    }
}

} // namespace

std::string ReportTitle(const std::string& name) { return "VANTREL Report: " + name; }

Task PrintReport(ReportContents contents, Printer& printer, TurnQueue& turns) {
    ReportPages pages(printer, ReportTitle(contents.name), contents.generalDate);
    PrintStatusStack(pages, contents.record);
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        co_await turns.Next();
        PrintSequence(pages, contents.record, sequence);
        const bool last = sequence + 1 == SequenceCount;
        if (!last && !pages.BreakPageWhenFull()) pages.SkipLine();
    }
    pages.End();
}

} // namespace vantrel
