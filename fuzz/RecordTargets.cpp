// Any bytes to the readers of records: none may fall, and what is read must write back to the same bytes and record.
#include "document/RecordTables.h"
#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "fuzz/FuzzTargets.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vantrel::fuzz {

namespace {

using Bytes = std::vector<std::uint8_t>;

bool StartsWith(Input bytes, const Bytes& start) {
    return start.size() <= bytes.size() && std::equal(start.begin(), start.end(), bytes.begin());
}

/// What a record answers must hold for every record that a file can hold.
void Examine(const Configuration& record) {
    Require(!DocumentChanged(record, record, record.CreatorVersion));
    for (const std::size_t index : ValuesNoWordCanHold(record)) {
        Require(index < ValueCount && (record.Value(index) < 0 || record.Value(index) > 65535));
    }
    const auto time = record.SavedDate.ToLocal();
    Require(IsoText(record.SavedDate).empty() == !time);
    if (time) Require(OleDate::FromLocal(*time).ToLocal() == time);
}

const Configuration& Defaults() {
    static const Configuration defaults = DefaultRecord("VANTREL_R1.0.0", {46095.25});
    return defaults;
}

/// A record that came from a text is whole, and goes out to a file and in again as the same.
void ExamineImported(const Configuration& record) {
    Examine(record);
    Require(record.Values.size() == ValueCount && record.AddressTypes.size() == ValueCount &&
            record.NodeDescriptions.size() == DescriptionCount);
    const Bytes bytes = SetupFileBytes(record);
    const Configuration read = ParseSetupFile(bytes);
    Require(SetupFileBytes(read) == bytes && !DocumentChanged(read, record, Defaults().CreatorVersion));
}

} // namespace

void TakeSetupFile(Input input) {
    try {
        const Configuration record = ParseSetupFile(input);
        Examine(record);
        Require(StartsWith(input, SetupFileBytes(record)));
    } catch (const BadSetupFile& error) {
        Require(error.Offset() <= input.size());
    }
}

void TakeImport(Input input) {
    try {
        ExamineImported(ImportText(TextOf(input), Defaults()));
    } catch (const BadImportFile& error) {
        Require(error.Line() >= 1 && error.ItemInLine() >= 1);
    }
}

void TakeJson(Input input) {
    try {
        const Configuration record = RecordFromJson(TextOf(input), Defaults());
        Examine(record);
        const std::string json = RecordJson(record);
        Require(RecordJson(RecordFromJson(json, Defaults())) == json);
    } catch (const RuntimeError& error) {
        Require(error.Number() == static_cast<int>(ErrorNumber::BadFileFormat) && *error.what() != 0);
    }
}

void TakeCsv(Input input) {
    try {
        const Configuration record = RecordFromCsv(TextOf(input), Defaults());
        ExamineImported(record);
        const std::string csv = RecordCsv(record);
        Require(RecordCsv(RecordFromCsv(csv, Defaults())) == csv);
    } catch (const BadImportFile& error) {
        Require(error.Line() >= 1);
    }
}

} // namespace vantrel::fuzz
