// The rules between cells, one function each; what they find is put in order at the end.
#include "document/SetupCheck.h"

#include "document/EntryRules.h"
#include "document/MemoryMap.h"
#include "document/ValueDisplay.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace vantrel {

namespace {

using Findings = std::vector<Finding>;

void Add(Findings& findings, Severity severity, std::size_t index, std::string text) {
    findings.push_back({severity, SequenceAt(index), index, std::move(text)});
}

const FieldDescription& FieldAt(std::size_t index) { return FieldTable().at(FieldOf(index)); }

/// Why no editor would take the value; empty when it would.
std::string Refusal(const Configuration& record, std::size_t index) {
    try {
        const EntryAnswer answer = CheckEntry(FieldAt(index).field, DisplayValue(record, index));
        const auto* refused = std::get_if<RefusedEntry>(&answer);
        return refused ? refused->text : std::string();
    } catch (const RuntimeError& error) {
        return error.what();
    }
}

/// A file may hold what no editor takes.
void CheckValues(const Configuration& record, Findings& findings) {
    for (std::size_t index = StatusStackIndex + 1; index < ValueCount; ++index) {
        const std::string refusal = Refusal(record, index);
        if (!refusal.empty()) {
            Add(findings, Severity::Error, index, DisplayValue(record, index) + " is out of range. " + refusal + ".");
        }
    }
    const std::int32_t stack = record.Value(StatusStackIndex);
    if (stack < 1 || stack > LastVWord) {
        Add(findings, Severity::Error, StatusStackIndex,
            DisplayValue(record, StatusStackIndex) + " is no word of V memory. Enter V1 to V34463.");
    }
}

std::string WhoseWords(const MemoryBlock& block) {
    return (block.kind == MemoryBlock::Kind::Send ? "The words sent, " : "The words received, ") + block.Text() + ",";
}

void CheckEndOfVMemory(const std::vector<MemoryBlock>& blocks, Findings& findings) {
    for (const MemoryBlock& block : blocks) {
        if (block.last <= LastVWord || block.first > LastVWord) continue;
        const std::int64_t latest = LastVWord - (block.last - block.first);
        const bool stack = block.kind == MemoryBlock::Kind::StatusStack;
        Add(findings, Severity::Error, block.index,
            (stack ? "The status stack takes 32 words: " + block.Text() : WhoseWords(block)) +
                " end behind V34463, the last word of V memory. Begin at V" + std::to_string(latest) + " or lower" +
                (stack ? "." : ", or move fewer words."));
    }
}

void CheckEndOfNode(const std::vector<MemoryBlock>& blocks, Findings& findings) {
    for (const MemoryBlock& block : blocks) {
        const FieldDescription& field = FieldAt(block.index);
        const std::int32_t end = block.notation == 'H' ? field.hexadecimalMaximum : field.maximum;
        if (block.last <= end || block.first > end) continue;
        const auto shown = [&](std::int64_t word) {
            return DisplayValue(static_cast<std::int32_t>(word), std::string(1, block.notation));
        };
        Add(findings, Severity::Error, block.index,
            block.Text() + " end behind " + shown(end) + ", the last word of a node in this notation. Begin at " +
                shown(end - (block.last - block.first)) + " or lower, or move fewer words.");
    }
}

/// The board writes the received words one sequence after another, and the status stack all the time.
void CheckReceiveOverlaps(const std::vector<MemoryBlock>& blocks, Findings& findings) {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const MemoryBlock& other = blocks[j];
            if (!blocks[i].Destroys(other)) continue;
            const bool stack = other.kind == MemoryBlock::Kind::StatusStack;
            Add(findings, Severity::Error, blocks[i].index,
                WhoseWords(blocks[i]) + " overwrite " +
                    (stack ? "the status stack" : "those of sequence " + std::to_string(SequenceOf(other.index))) +
                    ", " + other.Text() + ". Move one of them" + (stack ? "." : ", or receive fewer words."));
        }
    }
}

void CheckSendOverlaps(const std::vector<MemoryBlock>& blocks, Findings& findings) {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (blocks[i].kind != MemoryBlock::Kind::Send) continue;
        for (std::size_t j = 0; j < i; ++j) {
            const MemoryBlock& other = blocks[j];
            if (other.kind != MemoryBlock::Kind::Send || !blocks[i].Overlaps(other)) continue;
            Add(findings, Severity::Warning, blocks[i].index,
                "In node " + std::to_string(blocks[i].node) + " sequence " + std::to_string(SequenceOf(other.index)) +
                    " writes " + other.Text() + " and this one " + blocks[i].Text() +
                    ": what is sent last stays. Move one of them, or send fewer words.");
        }
    }
}

void CheckUse(const Configuration& record, Findings& findings) {
    using enum SequenceField;
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        const std::size_t node = ValueIndex(sequence, NodeNumber);
        const bool moves = record.Value(ValueIndex(sequence, SendWordCount)) != 0 ||
                           record.Value(ValueIndex(sequence, ReceiveWordCount)) != 0;
        if (!IsUsed(record, sequence)) {
            if (!moves) continue;
            Add(findings, Severity::Warning, node,
                "Words are to be moved, but the node number is 0: the board leaves this sequence out. Enter the node, "
                "or 0 words.");
            continue;
        }
        if (!moves) {
            Add(findings, Severity::Warning, node,
                "Nothing is sent to node " + std::to_string(record.Value(node)) +
                    " and nothing received from it. Enter how many words, or node number 0.");
        }
        if (record.NodeDescription(sequence).find_first_not_of(' ') == std::string::npos) {
            findings.push_back({Severity::Note, sequence, std::nullopt,
                                "The sequence is used, but nothing says what for. Enter a description."});
        }
    }
}

} // namespace

std::string_view SeverityName(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return "Error";
    case Severity::Warning:
        return "Warning";
    default:
        return "Note";
    }
}

std::string Finding::Place() const {
    return index ? ValueLabel(*index) : "sequence " + std::to_string(sequence) + ", Description";
}

std::vector<Finding> CheckSetup(const Configuration& record) {
    Findings findings;
    const std::vector<MemoryBlock> inTI = VBlocks(record);
    const std::vector<MemoryBlock> inNodes = NodeBlocks(record);
    CheckValues(record, findings);
    CheckEndOfVMemory(inTI, findings);
    CheckEndOfNode(inNodes, findings);
    CheckReceiveOverlaps(inTI, findings);
    CheckSendOverlaps(inNodes, findings);
    CheckUse(record, findings);
    std::ranges::stable_sort(findings, {}, [](const Finding& finding) {
        return std::pair(finding.severity, finding.index.value_or(ValueIndex(finding.sequence + 1, SequenceField{})));
    });
    return findings;
}

} // namespace vantrel
