// The rules in order: which notation an entry is in, which number it is, whether that lies within the field's limits.
#include "document/EntryRules.h"

#include "document/ValueDisplay.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"
#include "text/NumberText.h"
#include "text/PrintableText.h"
#include "text/Windows1252.h"

namespace vantrel {

namespace {

constexpr double NoNumber = -1; ///< Below every field's limits.

const FieldDescription& Described(SequenceField field) { return FieldTable().at(static_cast<std::size_t>(field)); }

/// The whole number that a text is; NoNumber when it is none.
double NumberOf(std::string_view text) { return IsNumeric(text) ? RoundHalfToEven(LeadingNumber(text)) : NoNumber; }

std::string LimitText(std::int32_t limit, char notation) { return DisplayValue(limit, std::string_view(&notation, 1)); }

/// Accepts a number within the field's limits in `notation`; otherwise the refusal names these limits.
EntryAnswer Judge(const FieldDescription& field, double number, char notation) {
    const bool nodeAddress = notation == 'W' || notation == 'H';
    const std::int32_t maximum = notation == 'H' ? field.hexadecimalMaximum : field.maximum;
    const bool unused = field.field == SequenceField::NodeNumber && number == 0;
    if (unused || (number >= field.minimum && number <= maximum)) {
        const auto value = static_cast<std::int32_t>(number);
        if (!nodeAddress || value % 2 == 0) return AcceptedEntry{value, notation};
    }
    return RefusedEntry{(nodeAddress ? "Only an Even Value Between " : "Only a Number Between ") +
                        LimitText(field.minimum, notation) + " and " + LimitText(maximum, notation) +
                        " can be Entered"};
}

EntryAnswer CheckTIAddress(const FieldDescription& field, std::string_view text) {
    if (!text.empty() && IsDigit(text.front())) return Judge(field, NumberOf(text), 'V');
    if (text.empty() || UpperAscii(text.front()) != 'V') return Judge(field, NoNumber, 'V');
    return Judge(field, NumberOf(text.substr(1)), 'V');
}

/// In two parts, the last two digits and those before them, so that the value has no sign. One character alone has
/// no two parts and is an invalid call. What is no digit is a slip of the finger, not the end of the number.
double HexadecimalNumber(std::string_view digits) {
    constexpr std::size_t lowDigits = 2;
    if (digits.size() < lowDigits) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    if (digits.find_first_not_of("0123456789ABCDEFabcdef") != std::string_view::npos) return NoNumber;
    const auto part = [](std::string_view of) { return LeadingNumber("&H" + std::string(of)); };
    const std::string_view high = digits.substr(0, digits.size() - lowDigits);
    return part(high) * 256 + part(digits.substr(high.size()));
}

EntryAnswer CheckNodeAddress(const FieldDescription& field, std::string_view text) {
    if (IsNumeric(text)) return Judge(field, NumberOf(text), 'W');
    if (text.empty()) return Judge(field, NoNumber, 'W');
    if (UpperAscii(text.front()) == 'W') return Judge(field, NumberOf(text.substr(1)), 'W');
    if (UpperAscii(text.back()) != 'H') return Judge(field, NoNumber, 'W');
    return Judge(field, HexadecimalNumber(text.substr(0, text.size() - 1)), 'H');
}

} // namespace

EntryAnswer CheckEntry(SequenceField field, std::string_view text) {
    const FieldDescription& described = Described(field);
    switch (described.notation) {
    case 'V':
        return CheckTIAddress(described, text);
    case 'W':
        return CheckNodeAddress(described, text);
    default:
        return Judge(described, NumberOf(text), '#');
    }
}

std::string DescriptionToStore(std::string_view text) {
    return Utf8FromWindows1252(Windows1252FromUtf8(OnOneLine(text)));
}

} // namespace vantrel
