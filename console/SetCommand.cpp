// The command that changes one value of a set-up file, by the rules of the editor. Needs no board.
#include "console/Commands.h"
#include "console/PrintableText.h"
#include "console/SetupFiles.h"
#include "document/FileCommands.h"
#include "document/SequenceEditor.h"
#include "document/ValueDisplay.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"

#include <optional>
#include <ostream>
#include <string>
#include <variant>

namespace vantrel {

namespace {

constexpr const char* Description = "NodeDescription"; ///< The only field of a sequence that is no value.

/// Nothing for the description.
std::optional<SequenceField> FieldNamed(const std::string& name) {
    if (SameIgnoringCase(name, Description)) return std::nullopt;
    std::string known;
    for (const FieldDescription& field : FieldTable()) {
        if (SameIgnoringCase(name, field.name)) return field.field;
        known += std::string(field.name) + ", ";
    }
    throw UsageError("There is no field \"" + name + "\". The fields are " + known + "and " + Description + ".");
}

/// The edit that the entry comes to, in the document; nothing when it is refused, which the user is told.
std::optional<Edit> Entered(CommandContext& context, const EditPlace& place) {
    const std::string& given = context.arguments.value;
    try {
        SequenceEditor editor(context.program.document.CurrentConfiguration);
        const EditAnswer answer = editor.Enter(place, given);
        if (const auto* edit = std::get_if<Edit>(&answer)) return *edit;
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

std::string Stored(CommandContext& context, const Edit& edit) {
    if (const auto* value = std::get_if<ValueEdit>(&edit)) {
        return ValueName(value->index) + ": " +
               DisplayValue(context.program.document.CurrentConfiguration, value->index);
    }
    const auto& description = std::get<DescriptionEdit>(edit);
    if (description.after != context.arguments.value) {
        context.Say("Note: line ends and tabs became blanks, and characters that a set-up file cannot hold \"?\".");
    }
    return "sequence " + std::to_string(description.sequence) + ", " + Description + ": " + description.after;
}

/// What has been stored in the document, in words; nothing when it was refused.
std::optional<std::string> StoredOf(CommandContext& context, const EditPlace& place) {
    const std::optional<Edit> edit = Entered(context, place);
    if (!edit) return std::nullopt;
    return Stored(context, *edit);
}

/// The same of the one value that belongs to no sequence.
std::optional<std::string> StoredStackAddress(CommandContext& context) {
    Configuration& record = context.program.document.CurrentConfiguration;
    const auto address = StackAddressIn(context.arguments.value);
    if (!address) {
        context.dialogs.Show(StackAddressRefusal());
        return std::nullopt;
    }
    record.SetValue(StatusStackIndex, *address);
    return ValueName(StatusStackIndex) + ": " + DisplayValue(record, StatusStackIndex);
}

} // namespace

ExitCode SetCommand(CommandContext& context) {
    constexpr const char* nothing = "Nothing was stored.";
    const Arguments& asked = context.arguments;
    const bool ofSequence = asked.sequence.has_value();
    EditPlace place;
    if (ofSequence) place = {SequenceNumber(*asked.sequence), FieldNamed(asked.field)};
    if (!OpenSetupFile(context, SetupFileNamed(asked.file), OtherVersion::Ask)) return Refuse(context, nothing);
    const auto stored = ofSequence ? StoredOf(context, place) : StoredStackAddress(context);
    if (!stored || !MayOverwrite(context)) return Refuse(context, nothing);
    SaveSetupFile(context);
    // Where the file itself is the result, it stays alone on standard output.
    std::ostream& told = IsStandardStream(context.arguments.file) ? context.host.err : context.host.out;
    told << PrintableText(*stored, Layout::Drop) << '\n';
    return ExitCode::Done;
}

} // namespace vantrel
