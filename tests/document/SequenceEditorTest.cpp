// Edits and what becomes of them, against the simulated board: what is stored, what is written, what is told.
#include "document/SequenceEditor.h"

#include "tests/support/BoardLink.h"

#include <functional>

namespace vantrel {
namespace {

using enum SequenceField;

constexpr std::uint16_t SendToNodeOf1 = 16384 + 512 + 6;

class SequenceEditorTest : public BoardLink<> {
protected:
    void Begin() {
        board = SimulatedBoard();
        record = DefaultRecord("VANTREL_R1.0.0", {});
        landed.clear();
        dialogs.shown.clear();
        line.onByte = nullptr;
        port.Close();
        port.MendLine();
        Open();
    }
    void Wait() { turns.RunToEnd(editor.Written()); }
    /// Enters a text at a place and waits for its landing.
    LandedEdit Land(const std::string& text) {
        editor.Enter({1, SendToNode}, text);
        EXPECT_TRUE(editor.OnItsWay(11));
        EXPECT_TRUE(landed.empty()) << "in a turn of its own";
        Wait();
        EXPECT_EQ(landed.size(), 1U);
        return landed.empty() ? LandedEdit{} : landed.front();
    }
    [[nodiscard]] int Flag() const { return board.Peek(105, clock.Now()); }
    [[nodiscard]] int Word() const { return board.PeekWord(SendToNodeOf1, clock.Now()); }

    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    std::vector<LandedEdit> landed;
    SequenceEditor editor{record, link, turns, [this](const LandedEdit& edit) { landed.push_back(edit); }};
};

TEST_F(SequenceEditorTest, AnEditIsStoredKeptAndTurnedAround) {
    const EditAnswer value = editor.Enter({1, SendToNode}, "1a0h");
    const EditAnswer description = editor.Enter({30, std::nullopt}, "M\u00FChle\t\u4E2D");
    EXPECT_TRUE(std::holds_alternative<RefusedEntry>(editor.Enter({1, SendToNode}, "33")));
    EXPECT_EQ(record.Value(11), 416);
    EXPECT_EQ(record.AddressType(11) + record.NodeDescription(30), "HM\u00FChle ?");
    for (const EditAnswer& answer : {value, description})
        editor.Apply(TurnedAround(std::get<Edit>(answer)));
    EXPECT_EQ(record.Value(11), 32);
    EXPECT_EQ(record.AddressType(11) + record.NodeDescription(30), "W");
    EXPECT_FALSE(editor.Writing()) << "OFFLINE";
}

TEST_F(SequenceEditorTest, OnlineAnEditIsWrittenBetweenTheFlagsReadBackAndJudged) {
    const auto once = [](auto when, auto act) {
        return [when, act, done = false]() mutable {
            if (done || !when()) return;
            done = true;
            act();
        };
    };
    const auto atFlag = [this] { return Flag() == 1; };
    const auto atValue = [this] { return Word() == 416; };
    const auto spoilTwoEchoes = [this] {
        for (int i = 0; i < 2; ++i)
            board.AddFault({.kind = FaultKind::WrongEcho, .firstTimeOnly = true});
    };
    const auto reconnect = [this] {
        port.CutLine();
        port.MendLine();
        dialogs.answers = {MessageAnswer::Retry};
    };
    const std::vector<std::tuple<const char*, std::function<void()>, const char*, const char*>> cases = {
        {"a healthy board", nullptr, "1A0H", ""},
        {"a board that makes its own of the value",
         [this] {
             if (Flag() == 0 && Word() == 416) board.PokeWord(SendToNodeOf1, 418, clock.Now());
         },
         "1A2H", "The board confirmed 1A0H for sequence 1, To Node, but holds 1A2H now.\nEnter it once more."},
        {"a board that spoils an echo of the value twice", once(atFlag, spoilTwoEchoes), "20H",
         "The board did not confirm 1A0H for sequence 1, To Node.\nIt holds 20H now."},
        {"a board that spoils an echo of the flag's end twice", once(atValue, spoilTwoEchoes), "1A0H",
         "The board holds 1A0H for sequence 1, To Node, but did not confirm all steps of the entry.\n"
         "Its B105 may be left at 1."},
        {"a link that is taken up again between the flags", once(atFlag, reconnect), "1A0H",
         "\nThe link was lost and taken up again in the middle of it."},
        {"a board that answers twice from the value on",
         once(atValue, [this] { board.AddFault({.kind = FaultKind::DoubledByte}); }), "1A0H",
         "could not be read clearly.\nIts B105 may be left at 1."},
        {"a link that dies between the flags", once(atFlag, [this] { port.CutLine(); }), "1A0H",
         "The link failed before the board had confirmed 1A0H for sequence 1, To Node.\nIts B105 may be left at 1."},
    };
    for (const auto& [what, onByte, cell, told] : cases) {
        SCOPED_TRACE(what);
        Begin();
        line.onByte = onByte;
        const LandedEdit edit = Land("1a0h");
        EXPECT_EQ(record.Value(11), 416);
        EXPECT_TRUE(edit.CellText().ends_with(cell)) << edit.CellText();
        EXPECT_NE(edit.Message().find(told), std::string::npos) << edit.Message();
        EXPECT_EQ(edit.Message().empty(), edit.Confirmed());
        EXPECT_EQ(editor.Unconfirmed(11), !edit.Confirmed());
        EXPECT_EQ(edit.HasLinkFailed(), std::string(told).starts_with("The link failed"));
        EXPECT_EQ(dialogs.shown.empty(), edit.Message().find("ink") == std::string::npos) << "the editor shows nothing";
        if (edit.HasLinkFailed()) continue;
        board.ClearFaults();
        line.onByte = nullptr;
        landed.clear();
        EXPECT_TRUE(Land("1a0h").Confirmed());
        EXPECT_FALSE(editor.Unconfirmed(11));
    }
}

TEST_F(SequenceEditorTest, AnotherDocumentIsNotMarkedAndWhatWasNotSentIsTold) {
    Begin();
    line.onByte = [this] {
        if (Flag() == 1) port.CutLine();
    };
    editor.Enter({1, SendToNode}, "40");
    editor.Enter({2, SendToNode}, "42");
    record = DefaultRecord("VANTREL_R1.0.0", {});
    Wait();
    EXPECT_FALSE(editor.Unconfirmed(11));
    ASSERT_EQ(landed.size(), 2U);
    EXPECT_EQ(landed.back().Message(), "The link failed before the board had confirmed W42 for sequence 2, To Node.\n"
                                       "Enter it once more when ONLINE again.");
}

} // namespace
} // namespace vantrel
