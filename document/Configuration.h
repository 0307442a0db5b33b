// The set-up record: a status stack address and 31 communication sequences, 218 values. Uses the field table only.
#pragma once

#include "document/FieldTable.h"
#include "document/OleDate.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vantrel {

/// The record in memory and, field by field in this order, in the set-up file. Texts are UTF-8.
/// A record read from a file may have shorter or longer arrays than the default layout; the member functions read a
/// missing element as empty, 0 or the default type, and storing past the end grows the array.
struct Configuration {
    std::string CreatorVersion; ///< `ProgramVersion` of the program that created or last saved the record.
    OleDate SavedDate; ///< When the record was created or last saved, local time.
    std::vector<std::string> TargetAddresses; ///< Target-board address of each value, 0..LastValueIndex.
    std::vector<std::int32_t> Values; ///< The set-up values, 0..LastValueIndex.
    std::vector<std::string> NodeDescriptions; ///< Of sequence s at s; 31 and 32 exist and stay empty.
    std::vector<std::string> AddressTypes; ///< "V", "W", "H" or "#": how the value of the same index is read.

    [[nodiscard]] std::string TargetAddress(std::size_t index) const;
    [[nodiscard]] std::int32_t Value(std::size_t index) const;
    [[nodiscard]] std::string NodeDescription(std::size_t sequence) const;
    [[nodiscard]] std::string AddressType(std::size_t index) const;

    void SetValue(std::size_t index, std::int32_t value);
    void SetNodeDescription(std::size_t sequence, const std::string& text);
    void SetAddressType(std::size_t index, const std::string& letter);
};

/// The default record: status stack at V1, no sequence used. `creatorVersion` and `date` are its stamp.
[[nodiscard]] Configuration DefaultRecord(const std::string& creatorVersion, OleDate date);

/// "W6400" for index 0; "W" + (16384 + 512 s + 2 k) for field k of sequence s (the board's memory map).
[[nodiscard]] std::string DefaultTargetAddress(std::size_t index);

/// The comparison behind "Save Changes to File?": a value of 0..LastValueIndex or one of the 33 descriptions differs
/// between the two, or `current` was stamped by another program version. Addresses and type letters do not count.
[[nodiscard]] bool DocumentChanged(const Configuration& current, const Configuration& saved,
                                   const std::string& programVersion);

/// The indices of the values that no download can carry: below 0 or above 65535, the range of a target word.
[[nodiscard]] std::vector<std::size_t> ValuesNoWordCanHold(const Configuration& record);

/// A line a value for a message box, "sequence 3, To Node"; at most ten, then how many more there are. `suffix`
/// gives what stands behind a name.
[[nodiscard]] std::string ValueList(const std::vector<std::size_t>& indices,
                                    const std::function<std::string(std::size_t)>& suffix);

/// What value `index` is, by the name that files and commands know: "status stack address", "sequence 3, SendToNode".
[[nodiscard]] std::string ValueName(std::size_t index);
/// The same as the windows show it, by the heading of its column: "sequence 3, To Node".
[[nodiscard]] std::string ValueLabel(std::size_t index);

} // namespace vantrel
