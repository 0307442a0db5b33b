// Differences in order, and their two forms on paper.
#include "document/Comparison.h"

#include "document/Edit.h"
#include "document/ValueDisplay.h"
#include "text/DelimitedText.h"

#include <algorithm>
#include <array>

namespace vantrel {

namespace {

constexpr const char* Unclear = "not read clearly";

Difference ValueRow(const Configuration& here, std::size_t index, std::string there) {
    return {
        .sequence = SequenceAt(index), .index = index, .here = DisplayValue(here, index), .there = std::move(there)};
}

std::string SequenceText(const Difference& difference) {
    return difference.index == StatusStackIndex ? "" : std::to_string(difference.sequence);
}

std::string ThereText(const Difference& difference) { return difference.doubtful ? Unclear : difference.there; }

} // namespace

std::string Difference::Field() const {
    if (!index) return "Description";
    return *index == StatusStackIndex ? ValueLabel(*index) : std::string(FieldTable().at(FieldOf(*index)).heading);
}

void PutInOrder(std::vector<Difference>& differences) {
    std::ranges::stable_sort(differences, {}, [](const Difference& difference) {
        return difference.index.value_or(ValueIndex(difference.sequence + 1, SequenceField{}));
    });
}

std::vector<Difference> DifferencesBetween(const Configuration& here, const Configuration& there) {
    std::vector<Difference> differences;
    for (const Edit& edit : EditsBetween(here, there)) {
        if (const auto* description = std::get_if<DescriptionEdit>(&edit)) {
            differences.push_back(
                {.sequence = description->sequence, .here = description->before, .there = description->after});
        } else if (const auto& value = std::get<ValueEdit>(edit); value.before.value != value.after.value) {
            differences.push_back(ValueRow(here, value.index, DisplayValue(there, value.index)));
        }
    }
    PutInOrder(differences);
    return differences;
}

std::vector<Difference> DifferencesFrom(const Configuration& here, const BoardComparison& board) {
    std::vector<Difference> differences;
    for (const ValueDifference& value : board.Differences()) {
        const std::string there = DisplayValue(value.index, value.onBoard, here.AddressType(value.index));
        differences.push_back(ValueRow(here, value.index, there));
    }
    for (const std::size_t index : board.Unread()) {
        differences.push_back(ValueRow(here, index, {}));
        differences.back().doubtful = true;
    }
    PutInOrder(differences);
    return differences;
}

std::string ComparisonText(const ComparisonReport& report) {
    constexpr std::size_t fieldWidth = 22;
    constexpr std::size_t hereWidth = 14;
    const auto padded = [](std::string text, std::size_t width) {
        text.resize(std::max(text.size(), width), ' ');
        return text;
    };
    const auto line = [&](const std::string& field, const std::string& here, const std::string& there) {
        return "  " + padded(field, fieldWidth) + padded(here, hereWidth) + "  " + there + "\n";
    };
    std::string text = "Comparison of set-ups, " + report.date + "\n\nHere:  " + report.here +
                       "\nThere: " + report.there + "\n\n" + line("", "Here", "There");
    std::string sequence;
    for (const Difference& difference : report.differences) {
        if (SequenceText(difference) != sequence) {
            sequence = SequenceText(difference);
            text += "Sequence " + sequence + "\n";
        }
        text += line(difference.Field(), difference.here, ThereText(difference));
    }
    if (!report.remark.empty()) return text + "\n" + report.remark + "\n";
    return text + (report.differences.empty() ? "\nNo differences.\n" : "");
}

std::string ComparisonCsv(const ComparisonReport& report) {
    std::string table = "\xEF\xBB\xBF" + DelimitedLine({"Seq #", "Field", "Here", "There"}, ',');
    for (const Difference& difference : report.differences) {
        table +=
            DelimitedLine({SequenceText(difference), difference.Field(), difference.here, ThereText(difference)}, ',');
    }
    return table;
}

} // namespace vantrel
