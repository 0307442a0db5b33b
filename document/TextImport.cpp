// The blocks of the older text format, item by item. Knows the record and the classic item syntax, no disk.
#include "document/TextImport.h"

#include "document/EntryRules.h"
#include "text/AsciiCase.h"
#include "text/NumberText.h"
#include "text/PrintableText.h"
#include "text/SequentialText.h"
#include "text/Utf8.h"
#include "text/Windows1252.h"

#include <utility>

namespace vantrel {

namespace {

// Where things stand in the file: item 3 of the header, and the items of a block.
constexpr std::size_t HeaderItems = 9;
constexpr std::size_t StatusStackItem = 3;
constexpr std::size_t NodeItem = 0;
constexpr std::size_t DescriptionItem = 1;
constexpr std::size_t LettersItem = 8;
constexpr std::size_t BlockItems = 9;
constexpr char EndOfBlock = '%';

std::string AtItem(std::size_t line, std::size_t item, const std::string& what) {
    return "The import file cannot be taken over. Line " + std::to_string(line) + ", item " + std::to_string(item) +
           ": " + what + ".";
}

BadImportFile BadItem(ErrorNumber number, const SequentialText& text, const std::string& what) {
    return {number, text.Line(), text.ItemInLine(), what};
}

std::string WithoutFirstCharacter(std::string_view text) {
    if (!text.empty()) TakeCharacter(text);
    return std::string(text);
}

class Import {
public:
    /// `utf8` has to outlive it.
    Import(std::string_view utf8, Configuration defaults) : text_(utf8), record_(std::move(defaults)) {}

    Configuration Run() && {
        TakeHeader();
        for (std::size_t sequence = 0; !text_.AtEnd(); ++sequence)
            TakeBlock(sequence);
        return std::move(record_);
    }

private:
    /// An item on several lines is one whose closing quote is missing: it has swallowed what stands behind it.
    std::string NextItem() {
        std::string item = text_.NextItem();
        if (item.find_first_of("\r\n") != std::string::npos) {
            throw BadItem(ErrorNumber::BadFileFormat, text_, "the line ends before the item's closing quote");
        }
        return item;
    }

    void TakeHeader() {
        for (std::size_t number = 0; number < HeaderItems && !text_.AtEnd(); ++number) {
            const std::string item = NextItem();
            if (number == StatusStackItem) record_.SetValue(StatusStackIndex, Number(item));
        }
    }

    void TakeBlock(std::size_t sequence) {
        for (std::size_t number = 0; number < BlockItems && !text_.AtEnd(); ++number) {
            const std::string item = NextItem();
            if (item.starts_with(EndOfBlock)) return;
            if (sequence >= SequenceCount) {
                throw BadItem(ErrorNumber::SubscriptOutOfRange, text_,
                              "the file has more than " + std::to_string(SequenceCount) + " sequences");
            }
            TakeItem(sequence, number, item);
        }
    }

    void TakeItem(std::size_t sequence, std::size_t number, const std::string& item) {
        const std::string unprefixed = WithoutFirstCharacter(item);
        if (number == DescriptionItem) {
            record_.SetNodeDescription(sequence, DescriptionToStore(unprefixed));
        } else if (number == LettersItem) {
            SetLetter(sequence, SequenceField::SendToNode, item, 0);
            SetLetter(sequence, SequenceField::ReceiveFromNode, item, 1);
        } else if (number == NodeItem) {
            record_.SetValue(ValueIndex(sequence, SequenceField::NodeNumber), Number(unprefixed));
        } else {
            // The description stands among the fields, so items 2 to 7 are fields 1 to 6.
            record_.SetValue(ValueIndex(sequence, static_cast<SequenceField>(number - 1)), Number(item));
        }
    }

    /// A letter that is missing keeps its default.
    void SetLetter(std::size_t sequence, SequenceField field, const std::string& letters, std::size_t position) {
        const char letter = position < letters.size() ? UpperAscii(letters[position]) : ' ';
        if (letter == ' ') return;
        if (letter != 'W' && letter != 'H') {
            throw BadItem(ErrorNumber::BadFileFormat, text_,
                          "the letters of the node addresses are W and H, not " + Shown(letters));
        }
        record_.SetAddressType(ValueIndex(sequence, field), std::string(1, letter));
    }

    [[nodiscard]] std::int32_t Number(const std::string& item) const {
        const auto number = LeadingInteger(item);
        if (!number) throw BadItem(ErrorNumber::Overflow, text_, "no value can hold the number " + Shown(item));
        return *number;
    }

    static std::string Shown(const std::string& item) {
        constexpr std::size_t longest = 30;
        return "\"" + Excerpt(item, longest) + "\"";
    }

    SequentialText text_;
    Configuration record_;
};

} // namespace

BadImportFile::BadImportFile(ErrorNumber number, std::size_t line, std::size_t item, const std::string& what)
    : RuntimeError(number, AtItem(line, item, what)), line_(line), item_(item) {}

Configuration ImportText(std::string_view bytes, const Configuration& defaults) {
    const std::string text = Utf8FromAnyEditor(bytes);
    return Import(text, defaults).Run();
}

} // namespace vantrel
