// The report on paper of any size: what is printed, where, and on which page.
#include "report/Report.h"
#include "report/ComparisonPages.h"
#include "report/TextWrap.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace vantrel {
namespace {

/// One text as it was printed.
struct Printed {
    int page;
    double x, y;
    std::string text;
    PrinterFont font;
};

/// Letters as wide as half their font's size, lines as high as `lineHeight` says for 12 points.
class RecordingPrinter final : public Printer {
public:
    RecordingPrinter(double width, double height, double lineHeight = 0.2)
        : width_(width), height_(height), lineHeight_(lineHeight) {}

    [[nodiscard]] double PageWidth() const override { return width_; }
    [[nodiscard]] double PageHeight() const override { return height_; }
    [[nodiscard]] int PageNumber() const override { return page_; }
    void SetFont(const PrinterFont& font) override { font_ = font; }
    [[nodiscard]] double TextHeight(std::string_view /*text*/) const override {
        return lineHeight_ * font_.points / 12;
    }
    [[nodiscard]] double TextWidth(std::string_view text) const override {
        return static_cast<double>(text.size()) * font_.points / 144;
    }
    void EndDocument() override { ended = true; }

    [[nodiscard]] std::vector<Printed> Those(const std::string& start) const {
        std::vector<Printed> those = printed;
        std::erase_if(those, [&](const Printed& each) { return !each.text.starts_with(start); });
        return those;
    }

    std::vector<Printed> printed;
    int turns = 0;
    bool ended = false;

private:
    void Draw(std::string_view text, double x, double y) override {
        printed.push_back({page_, x, y, std::string(text), font_});
    }
    void BeginPage() override { ++page_; }

    double width_, height_, lineHeight_;
    PrinterFont font_;
    int page_ = 1;
};

Configuration Record() { return DefaultRecord("VANTREL_R1.0.0", OleDate{}); }

void Report(RecordingPrinter& printer, const Configuration& record = Record()) {
    const VirtualClock clock;
    TurnQueue queue(clock);
    Task task =
        PrintReport({record, "[plant.sdt]", [] { return std::string("3/14/2026 9:05:07 AM"); }}, printer, queue);
    task.Start();
    while (queue.RunOne())
        ++printer.turns;
}

TEST(Report, PrintsEverySequenceWithItsSevenValuesInTheirNotationsAndColumns) {
    Configuration record = Record();
    record.SetValue(StatusStackIndex, 34463);
    record.SetNodeDescription(3, "Filler");
    record.SetAddressType(ValueIndex(3, SequenceField::SendToNode), "H");
    record.SetValue(ValueIndex(3, SequenceField::ReceiveFromNode), 8174);
    RecordingPrinter printer(8.5, 11);
    Report(printer, record);
    EXPECT_EQ(printer.Those("K5216-505 Communication Parameter List").at(0).font.points, 14);
    EXPECT_DOUBLE_EQ(printer.Those("A. Status Stack Address").at(0).x, 1.0);
    EXPECT_DOUBLE_EQ(printer.Those("  1. Ti-505 Communications Status Stack Address: ").at(0).x, 1.25);
    EXPECT_EQ(printer.Those("V34463").size(), 1U);
    const auto begin = std::ranges::find(printer.printed, "3", &Printed::text);
    std::vector<std::string> block;
    for (auto each = begin; block.size() < 17; ++each) {
        block.push_back(each->text);
        EXPECT_EQ(each->page, begin->page) << each->text;
    }
    EXPECT_EQ(block, (std::vector<std::string>{
                         "3", "Node Description:  ", "Filler", "Slave Node Number:  ", "0",
                         "Number of Words to Send: ", "0", "From Starting Address in TI-505: ", "V1",
                         "To Starting Address in Slave Node: ", "20H", "Number of Words to Read: ", "0",
                         "From Starting Address in Slave Node: ", "W8174", "To Starting Address in TI-505: ", "V1"}));
    EXPECT_DOUBLE_EQ((begin + 3)->x, 1.5);
    EXPECT_DOUBLE_EQ((begin + 4)->x, 6.25);
    EXPECT_EQ(printer.Those("Sequence Number:  ").size(), SequenceCount);
    EXPECT_EQ(printer.turns, 31);
    EXPECT_TRUE(printer.ended);
}

TEST(Report, HasHeaderAndNumberedFooterOnEveryPageAndNothingInTheFooterOrOffThePaper) {
    Configuration record = Record();
    record.SetNodeDescription(2, std::string(40'000, 'x'));
    for (const auto& [width, height] : {std::pair{8.5, 11.0}, {8.27, 11.69}, {11.69, 8.27}, {5.8, 8.3}, {8.5, 2.5}}) {
        RecordingPrinter printer(width, height);
        Report(printer, record);
        const int pages = printer.PageNumber();
        const auto headers = printer.Those("VANTREL Report: [plant.sdt]");
        const auto dates = printer.Those("3/14/2026 9:05:07 AM");
        ASSERT_EQ(headers.size(), static_cast<std::size_t>(pages));
        ASSERT_EQ(dates.size(), headers.size());
        std::size_t xs = 0;
        for (int page = 1; page <= pages; ++page) {
            EXPECT_EQ(headers[static_cast<std::size_t>(page) - 1].page, page);
            EXPECT_EQ(printer.Those("Page " + std::to_string(page)).at(0).page, page);
        }
        for (const Printed& each : printer.printed) {
            const bool footer = each.text.starts_with("Page ") || each.text == dates[0].text;
            EXPECT_EQ(each.font.points == 10, footer);
            EXPECT_LE(each.y, footer ? dates[0].y : dates[0].y - 0.2) << each.text << " on " << height;
            EXPECT_LE(each.x + static_cast<double>(each.text.size()) * each.font.points / 144, width) << each.text;
            xs += static_cast<std::size_t>(std::count(each.text.begin(), each.text.end(), 'x'));
        }
        EXPECT_EQ(xs, 40'000U) << "nothing of a long description is lost";
    }
}

TEST(TextWrap, FillsEveryLineAndMeasuresLittleMoreThanItPrints) {
    std::string text;
    for (int i = 0; i < 10'000; ++i)
        text += i % 7 == 3 ? "x" : i % 3 == 0 ? "\u00FC" : "\u20AC";
    for (const std::size_t room : {1U, 5U, 80U}) {
        std::size_t measured = 0;
        const std::vector<std::string> lines = WrappedText(text, [&](std::string_view line) {
            measured += line.size();
            const auto begins = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
            return static_cast<std::size_t>(std::ranges::count_if(line, begins)) <= room;
        });
        EXPECT_EQ(std::accumulate(lines.begin(), lines.end(), std::string()), text);
        EXPECT_EQ(lines.size(), (10'000 + room - 1) / room) << "whole characters, as many as fit";
        EXPECT_LT(measured, 20 * text.size()) << room;
    }
}

TEST(Report, BreaksThePageWhenLessThanNineTenthsAndALineAreLeftButNeverAfterTheLastSequence) {
    // Lines so low that a block takes less than the check asks for.
    constexpr double line = 0.02;
    RecordingPrinter endless(8.5, 100, line);
    Report(endless);
    const double justFull = endless.Those("To Starting Address in TI-505: ").at(29).y + line + 0.9 + line;
    for (const double more : {0.01, -0.01}) {
        RecordingPrinter printer(8.5, justFull + more, line);
        Report(printer);
        EXPECT_EQ(printer.Those("Sequence Number:  ").at(29).page, 1);
        EXPECT_EQ(printer.Those("Sequence Number:  ").at(30).page, more > 0 ? 1 : 2) << "the last one leaves less";
    }
}

TEST(Comparison, PrintsEachSequenceOnceAndCallsNothingEqualThatWasNotRead) {
    ComparisonReport report{"plant.sdt", "the board", "noon", "", {}};
    const auto body = [&report] {
        RecordingPrinter printer(8.5, 11);
        PrintComparison(report, printer, [] { return std::string("now"); });
        EXPECT_TRUE(printer.ended);
        std::string all;
        for (const Printed& each : printer.printed)
            all += each.text + "\n";
        return all.substr(all.find("noon"), all.rfind("now") - all.find("noon"));
    };
    EXPECT_NE(body().find("No differences."), std::string::npos);
    report.remark = "2 values could not be read clearly.";
    EXPECT_EQ(body().find("No differences."), std::string::npos);
    EXPECT_NE(body().find(report.remark), std::string::npos);
    report.differences = {{0, StatusStackIndex, "V1", "V2"},
                          {3, ValueIndex(3, SequenceField::NodeNumber), "5", "", true},
                          {3, std::nullopt, "Pump", "Fan"}};
    const std::string printed = body();
    for (const char* text : {"Set-up\n", "V1 here, V2 there", "5 here, not read clearly there", "Pump here, Fan there"})
        EXPECT_NE(printed.find(text), std::string::npos) << text << " in\n" << printed;
    EXPECT_NE(printed.find("Sequence 3"), std::string::npos);
    EXPECT_EQ(printed.find("Sequence 3"), printed.rfind("Sequence 3")) << printed;
}

} // namespace
} // namespace vantrel
