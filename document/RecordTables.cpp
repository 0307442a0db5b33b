// JSON field by field; the table cell by cell, through the rules of single entries.
#include "document/RecordTables.h"

#include "document/CellBlock.h"
#include "document/FileCommands.h"
#include "document/TextImport.h"
#include "document/ValueDisplay.h"
#include "text/AsciiCase.h"
#include "text/DelimitedText.h"
#include "text/NumberText.h"
#include "text/PrintableText.h"
#include "text/Windows1252.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <bitset>
#include <chrono>
#include <cstddef>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr const char* SequenceHeading = "Seq #";
constexpr const char* DescriptionHeading = "Description";
constexpr const char* StackHeading = "Status stack";

/// The date that IsoText wrote; nothing for any other text.
std::optional<OleDate> DateIn(const std::string& text) {
    std::istringstream stream(text);
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    char dash = 0;
    char colon = 0;
    stream >> year >> dash >> month >> dash >> day >> dash >> hour >> colon >> minute >> colon >> second;
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{month}, std::chrono::day{day}};
    if (!stream || !date.ok()) return std::nullopt;
    const OleDate found = OleDate::FromLocal(std::chrono::local_days{date} + std::chrono::hours{hour} +
                                             std::chrono::minutes{minute} + std::chrono::seconds{second});
    return IsoText(found) == text ? std::optional(found) : std::nullopt;
}

[[noreturn]] void Reject(const std::string& what) {
    throw RuntimeError(ErrorNumber::BadFileFormat, "The JSON holds no set-up: " + what + ".");
}

/// The member of that name, or its default.
template <typename Member> void Take(const Json& json, const char* name, Member& member) {
    const auto found = json.find(name);
    if (found == json.end()) return;
    try {
        member = found->template get<Member>();
    } catch (const Json::exception&) {
        Reject(std::string("\"") + name + "\" is not of the right kind");
    }
}

/// The library takes fractions and what no 32 bits hold for integers.
void RequireWholeNumbers(const Json& json) {
    const auto values = json.find("values");
    if (values == json.end() || !values->is_array()) return;
    for (const Json& value : *values) {
        if (!value.is_number_integer() || value < INT32_MIN || value > INT32_MAX) {
            Reject("\"values\" holds " + Excerpt(value.dump(-1, ' ', true, Json::error_handler_t::replace), 30));
        }
    }
}

/// The line of the table and the cell in it, both from 1, for messages.
struct CellAt {
    std::size_t line;
    std::size_t cell;
};

BadImportFile BadCell(const CellAt& at, const std::string& what) {
    return {ErrorNumber::BadFileFormat, at.line, at.cell, what};
}

std::string Quoted(const std::string& text) {
    constexpr std::size_t longest = 30;
    return "\"" + Excerpt(text, longest) + "\"";
}

/// Reads the lines of a table into a record.
class TableReader {
public:
    explicit TableReader(Configuration defaults) : record_(std::move(defaults)) {}

    void TakeHeadings(const TextRow& row) {
        for (std::size_t i = 0; i < row.size(); ++i)
            columns_.push_back(ColumnOf(row[i], {1, i + 1}));
        if (!std::ranges::count(columns_, SequenceColumn)) {
            throw BadCell({1, 1}, "a table begins with its headings, and one of them is " + Quoted(SequenceHeading));
        }
    }

    void TakeLine(const TextRow& row, std::size_t line) {
        if (std::ranges::all_of(row, [](const std::string& cell) { return cell.empty(); })) return;
        if (SameIgnoringCase(row.front(), StackHeading)) return TakeStack(row, line);
        const std::size_t sequence = SequenceIn(row, line);
        for (std::size_t i = 0; i < row.size(); ++i) {
            const CellAt at{line, i + 1};
            if (i >= columns_.size()) {
                if (!row[i].empty()) throw BadCell(at, "there is no heading over " + Quoted(row[i]));
            } else if (columns_[i] < CellColumns) {
                TakeCell(PlaceAt(sequence, columns_[i]), row[i], at);
            }
        }
    }

    [[nodiscard]] Configuration Record() && { return std::move(record_); }

private:
    static constexpr std::size_t SequenceColumn = CellColumns;
    static constexpr std::size_t NoColumn = CellColumns + 1; ///< A heading may be empty; its cells are not read.

    static std::size_t ColumnOf(const std::string& heading, const CellAt& at) {
        if (heading.empty()) return NoColumn;
        if (SameIgnoringCase(heading, SequenceHeading)) return SequenceColumn;
        if (SameIgnoringCase(heading, DescriptionHeading)) return DescriptionColumn;
        const auto& table = FieldTable();
        const auto is = [&](const FieldDescription& field) { return SameIgnoringCase(heading, field.heading); };
        const auto field = std::ranges::find_if(table, is);
        if (field == table.end()) throw BadCell(at, "there is no column " + Quoted(heading));
        return static_cast<std::size_t>(field - table.begin());
    }

    std::size_t SequenceIn(const TextRow& row, std::size_t line) {
        const auto column = static_cast<std::size_t>(std::ranges::find(columns_, SequenceColumn) - columns_.begin());
        const std::string text = column < row.size() ? row[column] : std::string();
        const auto number = WholeNumber(text);
        if (!number || *number < 0 || *number >= static_cast<std::int32_t>(SequenceCount)) {
            throw BadCell({line, column + 1}, "a sequence is a number from 0 to 30, not " + Quoted(text));
        }
        const auto sequence = static_cast<std::size_t>(*number);
        if (seen_.test(sequence)) throw BadCell({line, column + 1}, "sequence " + text + " is there twice");
        seen_.set(sequence);
        return sequence;
    }

    void TakeStack(const TextRow& row, std::size_t line) {
        const auto address = row.size() > 1 ? StackAddressIn(row[1]) : std::nullopt;
        if (!address) throw BadCell({line, 2}, "the status stack stands at an address of V1 to V34463");
        record_.SetValue(StatusStackIndex, *address);
    }

    void TakeCell(const EditPlace& place, const std::string& text, const CellAt& at) {
        try {
            const EditAnswer answer = EditOf(record_, place, text);
            if (const auto* edit = std::get_if<Edit>(&answer)) return Store(record_, *edit);
            throw BadCell(at, Quoted(text) + ": " + std::get<RefusedEntry>(answer).text);
        } catch (const BadImportFile&) {
            throw;
        } catch (const RuntimeError& error) {
            throw BadCell(at, Quoted(text) + ": " + error.what());
        }
    }

    Configuration record_;
    std::vector<std::size_t> columns_;
    std::bitset<SequenceCount> seen_;
};

} // namespace

std::string RecordJson(const Configuration& record) {
    const Json json = {{"creatorVersion", record.CreatorVersion},
                       {"savedDate", IsoText(record.SavedDate)},
                       {"values", record.Values},
                       {"targetAddresses", record.TargetAddresses},
                       {"nodeDescriptions", record.NodeDescriptions},
                       {"addressTypes", record.AddressTypes}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Configuration RecordFromJson(std::string_view text, const Configuration& defaults) {
    if (text.starts_with(Utf8Mark)) text.remove_prefix(Utf8Mark.size());
    Json json;
    try {
        json = Json::parse(text);
    } catch (const Json::exception& error) {
        // "[json.exception.parse_error.101] parse error at line 2, column 1: ..."
        const std::string what = error.what();
        constexpr std::size_t longest = 200;
        Reject(Excerpt(what.substr(std::min(what.find("] ") + 2, what.size())), longest));
    }
    if (!json.is_object() || !json.contains("values")) Reject("there are no \"values\" in it");
    RequireWholeNumbers(json);
    Configuration record = defaults;
    std::string date;
    Take(json, "creatorVersion", record.CreatorVersion);
    Take(json, "savedDate", date);
    Take(json, "values", record.Values);
    Take(json, "targetAddresses", record.TargetAddresses);
    Take(json, "nodeDescriptions", record.NodeDescriptions);
    Take(json, "addressTypes", record.AddressTypes);
    if (!date.empty()) {
        const auto saved = DateIn(date);
        if (!saved) Reject("\"savedDate\" is " + Quoted(date) + ", not a date as 2026-03-14T09:05:07");
        record.SavedDate = *saved;
    }
    return record;
}

std::string RecordCsv(const Configuration& record) {
    TextRow headings{SequenceHeading};
    for (const FieldDescription& field : FieldTable())
        headings.emplace_back(field.heading);
    headings.emplace_back(DescriptionHeading);
    std::string table = std::string(Utf8Mark) + DelimitedLine(headings, ',');
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        TextRow row{std::to_string(sequence)};
        for (std::size_t column = 0; column < CellColumns; ++column)
            row.push_back(CellText(record, PlaceAt(sequence, column)));
        table += DelimitedLine(row, ',');
    }
    return table + DelimitedLine({StackHeading, DisplayValue(record, StatusStackIndex)}, ',');
}

Configuration RecordFromCsv(std::string_view bytes, const Configuration& defaults) {
    const std::string text = Utf8FromAnyEditor(bytes);
    TableReader reader(defaults);
    constexpr std::size_t mostLines = 10000; // Blank ones included; without a limit a hostile file costs any memory.
    const std::vector<TextRow> rows = DelimitedRows(text, SeparatorOf(text), mostLines + 1);
    reader.TakeHeadings(rows.empty() ? TextRow() : rows.front());
    for (std::size_t i = 1; i < rows.size(); ++i)
        reader.TakeLine(rows[i], i + 1);
    if (rows.size() > mostLines) {
        throw BadImportFile(ErrorNumber::BadFileFormat, rows.size(), 1, "no table of a set-up has so many lines");
    }
    return std::move(reader).Record();
}

} // namespace vantrel
