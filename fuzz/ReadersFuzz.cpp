// Any bytes, to every reader of files: none may fall, and what is read must write back to the same bytes and record.
#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "text/NumberText.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

using namespace vantrel;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using Bytes = std::vector<std::uint8_t>;

void Require(bool holds) {
    if (!holds) std::abort();
}

bool StartsWith(std::span<const std::uint8_t> bytes, const Bytes& start) {
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

void ReadSetupFile(std::span<const std::uint8_t> bytes) {
    try {
        const Configuration record = ParseSetupFile(bytes);
        Examine(record);
        Require(StartsWith(bytes, SetupFileBytes(record)));
    } catch (const BadSetupFile& error) {
        Require(error.Offset() <= bytes.size());
    }
}

const Configuration& Defaults() {
    static const Configuration defaults = DefaultRecord("VANTREL_R1.0.0", {46095.25});
    return defaults;
}

void ReadImport(const std::string& text) {
    try {
        const Configuration record = ImportText(text, Defaults());
        Examine(record);
        Require(record.Values.size() == ValueCount && record.AddressTypes.size() == ValueCount &&
                record.NodeDescriptions.size() == DescriptionCount);
        const Bytes bytes = SetupFileBytes(record);
        const Configuration read = ParseSetupFile(bytes);
        Require(SetupFileBytes(read) == bytes && !DocumentChanged(read, record, Defaults().CreatorVersion));
    } catch (const BadImportFile& error) {
        Require(error.Line() >= 1 && error.ItemInLine() >= 1);
    }
}

void ReadText(const std::string& text) {
    Require(Windows1252FromUtf8(Utf8FromWindows1252(text)) == text);
    Require(Windows1252FromUtf8(text).size() <= text.size());
    const auto number = LeadingInteger(text);
    Require(!number || LeadingInteger(std::to_string(*number)) == number);
}

/// The files that the search starts from.
Bytes Seed(bool import) {
    if (!import) return SetupFileBytes(Defaults());
    std::string text = "a,b,c,500,e,f,g,h,i\n";
    for (int block = 0; block < 31; ++block)
        text += "N2,\"DMain pump, left\",10,V5,&H40,11.5,1D2,7,HW\n";
    return {text.begin(), text.end()};
}

} // namespace

/// Whole files are too long to be found by chance: every so often the search starts again from a good one.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    if (seed % 16 == 0) {
        const Bytes good = Seed(seed % 32 == 0);
        size = std::min(good.size(), maxSize);
        std::copy_n(good.begin(), size, data);
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    ReadSetupFile({data, size});
    ReadImport(text);
    ReadText(text);
    return 0;
}
