// The command that changes one value of a set-up file, by the rules of the editor. Needs no board.
#include "console/Commands.h"
#include "console/PrintableText.h"
#include "console/SetupFiles.h"
#include "document/EntryRules.h"
#include "document/ValueDisplay.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <variant>

namespace vantrel {

namespace {

constexpr const char* Description = "NodeDescription"; ///< The only field of a sequence that is no value.

bool IsSameName(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

/// Nothing for the description.
std::optional<SequenceField> FieldNamed(const std::string& name) {
    if (IsSameName(name, Description)) return std::nullopt;
    std::string known;
    for (const FieldDescription& field : FieldTable()) {
        if (IsSameName(name, field.name)) return field.field;
        known += std::string(field.name) + ", ";
    }
    throw UsageError("There is no field \"" + name + "\". The fields are " + known + "and " + Description + ".");
}

/// The entry as the editor would store it; nothing when it refuses, which the user is told.
std::optional<AcceptedEntry> Accepted(CommandContext& context, SequenceField field) {
    try {
        const EntryAnswer answer = CheckEntry(field, context.arguments.value);
        if (const auto* accepted = std::get_if<AcceptedEntry>(&answer)) return *accepted;
        context.dialogs.Show({.title = EntryRefusalTitle,
                              .text = std::get<RefusedEntry>(answer).text,
                              .icon = MessageIcon::Exclamation});
    } catch (const RuntimeError& error) {
        ReportRuntimeError(context.dialogs, "VANTREL", error);
    }
    return std::nullopt;
}

/// The document is saved over the file that it came from; when the extension forces it into another one, the user is
/// asked.
bool MayOverwrite(CommandContext& context) {
    const Document& document = context.program.document;
    return document.SaveTarget() == document.FilePath || NameSetupFile(context, context.arguments.file);
}

std::string StoreValue(Configuration& record, std::size_t index, const AcceptedEntry& entry) {
    record.SetValue(index, entry.value);
    record.SetAddressType(index, std::string(1, entry.notation));
    return ValueName(index) + ": " + DisplayValue(record, index);
}

std::string StoreDescription(CommandContext& context, std::size_t sequence) {
    const std::string& given = context.arguments.value;
    const std::string text = Utf8FromWindows1252(Windows1252FromUtf8(PrintableText(given, Layout::Drop)));
    if (text != given) context.Say("Note: characters that a set-up file cannot hold became \"?\".");
    context.program.document.CurrentConfiguration.SetNodeDescription(sequence, text);
    return "sequence " + std::to_string(sequence) + ", " + Description + ": " + text;
}

} // namespace

ExitCode SetCommand(CommandContext& context) {
    constexpr const char* nothing = "Nothing was stored.";
    const std::size_t sequence = SequenceNumber(context.arguments.sequence.value_or(""));
    const std::optional<SequenceField> field = FieldNamed(context.arguments.field);
    const auto entry = field ? Accepted(context, *field) : std::nullopt;
    if (field && !entry) return Refuse(context, nothing);
    if (!OpenSetupFile(context, SetupFileNamed(context.arguments.file), OtherVersion::Ask) || !MayOverwrite(context)) {
        return Refuse(context, nothing);
    }
    const std::string stored =
        field ? StoreValue(context.program.document.CurrentConfiguration, ValueIndex(sequence, *field), *entry)
              : StoreDescription(context, sequence);
    SaveSetupFile(context);
    context.host.out << PrintableText(stored, Layout::Drop) << '\n';
    return ExitCode::Done;
}

} // namespace vantrel
