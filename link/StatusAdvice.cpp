#include "link/StatusAdvice.h"

#include <array>

namespace vantrel {

namespace {

constexpr StatusAdvice AdviceOnOthers{"The board reports a code that has no meaning of its own.",
                                      "Reset the board; when the code comes back, note it for the board's maker."};

constexpr const char* DisturbedLine =
    "Check the network cable's shield, earthing and terminators, and what runs beside the cable.";

constexpr std::array<StatusAdvice, 19> Advice{{
    {"The board does not run this sequence.",
     "If it is to run, its node number must be from 2 to 32; 0 switches a sequence off."},
    {"The board reports an error that it does not name.", "Reset the board; when the code comes back, check all "
                                                          "settings of this sequence."},
    {"The node answered.", ""},
    {"The board has noticed another master on the network.",
     "Find the second master and disconnect it; only one board may be master."},
    {"The time for sending ran out, and nothing responded.",
     "Check the network cable and the terminators, then the board's network interface."},
    {"The node did not answer in time.",
     "Check that the node has power, is connected, and is set to this sequence's node number."},
    {"The command of this sequence was called invalid.",
     "Check that the node is of a kind that knows these addresses, and compare the addresses with its manual."},
    {"More words came than the board could take.", "Compare the number of words to receive with what the node sends."},
    {"Two stations sent at the same time while the board received.",
     "Look for two nodes with the same number, and for a second master."},
    {"An answer came with a number of bits that makes no whole bytes.", DisturbedLine},
    {"An answer came whose check sum is wrong.", DisturbedLine},
    {"The board reports an error that it does not know.",
     "Reset the board; when the code comes back, check the network one node at a time."},
    {"The node did not acknowledge what the board sent.",
     "Check that the node is ready, and that it takes words at the address under To Node."},
    {"The board ran out of bytes while it was sending.",
     "Reset the board; when the code comes back, the board itself needs a check."},
    {"Two stations sent at the same time while the board was sending.",
     "Look for a second master; else check the network cable and the terminators."},
    {"An address of this sequence, or its address and number of words together, lies outside the allowed range.",
     "Compare To Node, From Node and the numbers of words with the memory that the node has."},
    {"An answer came that did not belong to the command.", "Look for two nodes with the same number."},
    {"The board could not read the V memory of the TI-505.",
     "Check From TI and the number of words to send; the whole block must lie in the controller's V memory."},
    {"The board could not write to the V memory of the TI-505.",
     "Check To TI and the number of words to receive; the whole block must lie in the controller's V memory."},
}};

} // namespace

StatusAdvice AdviceOn(std::uint32_t code) { return code < Advice.size() ? Advice.at(code) : AdviceOnOthers; }

std::string AdviceText(std::uint32_t code) {
    const StatusAdvice advice = AdviceOn(code);
    return std::string(advice.cause) + (advice.remedy.empty() ? "" : " " + std::string(advice.remedy));
}

} // namespace vantrel
