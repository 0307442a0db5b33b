// The command that changes one value of a set-up file, by the rules of the editor. Needs no board.
#include "console/Commands.h"
#include "console/SetupFiles.h"
#include "document/FileCommands.h"
#include "document/FileQuestions.h"
#include "document/SequenceEditor.h"
#include "document/ValueDisplay.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"
#include "text/Padding.h"
#include "text/PrintableText.h"

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

/// The one value that belongs to no sequence, and so needs one word less.
bool OfStackAddress(const Arguments& asked) {
    return !asked.entry && SameIgnoringCase(asked.sequence.value_or(""), StatusStackField);
}

const std::string& EntryOf(const Arguments& asked) { return OfStackAddress(asked) ? *asked.field : *asked.entry; }

/// The edit that the entry comes to, in the document; nothing when it is refused, which the user is told.
std::optional<Edit> Entered(CommandContext& context, const EditPlace& place) {
    const std::string& given = EntryOf(context.arguments);
    try {
        SequenceEditor editor(context.program.document.CurrentConfiguration);
        const EditAnswer answer = editor.Enter(place, given);
        if (const auto* edit = std::get_if<Edit>(&answer)) return *edit;
        context.dialogs.Show({.title = EntryRefusalTitle,
                              .text = std::get<RefusedEntry>(answer).text,
                              .icon = MessageIcon::Exclamation});
    } catch (const RuntimeError& error) {
        ReportRuntimeError(context.dialogs, ProgramTitle, error);
    }
    return std::nullopt;
}

/// The document is saved over the file that it came from; when the extension forces it into another one, the user is
/// asked.
bool MayOverwrite(CommandContext& context) {
    const Document& document = context.program.document;
    if (IsStandardStream(context.arguments.file)) return NameSetupFile(context, context.arguments.file);
    return AcceptsTarget(document, document.OwnFile, context.dialogs);
}

/// What has been stored in the document, in words; nothing when it was refused.
std::optional<std::string> StoredOf(CommandContext& context, const EditPlace& place) {
    const std::optional<Edit> edit = Entered(context, place);
    if (!edit) return std::nullopt;
    if (const auto* value = std::get_if<ValueEdit>(&*edit)) {
        return ValueName(value->index) + ": " +
               DisplayValue(context.program.document.CurrentConfiguration, value->index);
    }
    const auto& description = std::get<DescriptionEdit>(*edit);
    if (description.after != EntryOf(context.arguments)) {
        context.Say("Note: line ends and tabs became blanks, and characters that a set-up file cannot hold \"?\".");
    }
    return "sequence " + std::to_string(description.sequence) + ", " + Description + ": " + description.after;
}

/// What has been stored as the one value that belongs to no sequence, in words; nothing when it was refused.
std::optional<std::string> StoredStackAddress(CommandContext& context) {
    Configuration& record = context.program.document.CurrentConfiguration;
    const auto address = StackAddressIn(EntryOf(context.arguments));
    if (!address) {
        context.dialogs.Show(StackAddressRefusal());
        return std::nullopt;
    }
    record.SetValue(StatusStackIndex, *address);
    return ValueName(StatusStackIndex) + ": " + DisplayValue(record, StatusStackIndex);
}

/// The sequence and its field; nothing for the status stack address.
std::optional<EditPlace> PlaceNamed(const Arguments& asked) {
    if (OfStackAddress(asked) && asked.field) return std::nullopt;
    if (!asked.entry) {
        throw UsageError(std::string("Say what to set: a SEQUENCE, its FIELD and the VALUE, or ") + StatusStackField +
                         " and the VALUE.");
    }
    return EditPlace{SequenceNumber(*asked.sequence), FieldNamed(*asked.field)};
}

ExitCode Set(CommandContext& context) {
    constexpr const char* nothing = "Nothing was stored.";
    const std::optional<EditPlace> place = PlaceNamed(context.arguments);
    if (!OpenSetupFile(context, OtherVersion::Ask)) return Refuse(context, nothing);
    const auto stored = place ? StoredOf(context, *place) : StoredStackAddress(context);
    if (!stored || !MayOverwrite(context)) return Refuse(context, nothing);
    SaveSetupFile(context);
    // Where the file itself is the result, it stays alone on standard output.
    std::ostream& told = IsStandardStream(context.arguments.file) ? context.host.err : context.host.out;
    told << PrintableText(*stored, Layout::Drop) << '\n';
    return ExitCode::Done;
}

std::string FieldHelp() {
    const auto limits = [](const FieldDescription& field, char notation, std::int32_t maximum) {
        const std::string_view type(&notation, 1);
        return DisplayValue(field.minimum, type) + " to " + DisplayValue(maximum, type);
    };
    std::string help = "Fields, and what is stored in them:\n"
                       "  StatusStackAddress  V1 to V34463; of the whole set-up, without a sequence\n";
    for (const FieldDescription& field : FieldTable()) {
        const bool switchable = field.notation == 'W';
        const bool maybeUnused = field.field == SequenceField::NodeNumber;
        help += "  " + PadRight(std::string(field.name), 20) + limits(field, field.notation, field.maximum) +
                (switchable ? ", or " + limits(field, 'H', field.hexadecimalMaximum) + "; even" : "") +
                (maybeUnused ? ", or 0: not used" : "") + "\n";
    }
    return help + "  NodeDescription     any text\n\n";
}

} // namespace

const Command SetCommand{"set",
                         "Change one value in a set-up file",
                         [](CommandOptions& options) {
                             options.File("The set-up file to change");
                             options.Place("SEQUENCE", options.to.sequence,
                                           "The number of the sequence, 0 to 30; StatusStackAddress needs no FIELD");
                             options.Place("FIELD", options.to.field, "The name of the field, in any case, see below");
                             options.Place("VALUE", options.to.entry, "What to store, as it is entered in the editor");
                             options.Yes();
                         },
                         "  vantrelctl set plant.sdt StatusStackAddress V500\n"
                         "  vantrelctl set plant.sdt 3 NodeNumber 5\n"
                         "  vantrelctl set plant.sdt 3 SendToNode 1A0H\n"
                         "  vantrelctl set plant.sdt 3 NodeDescription \"Filler, left\"\n",
                         Set,
                         FieldHelp};

} // namespace vantrel
