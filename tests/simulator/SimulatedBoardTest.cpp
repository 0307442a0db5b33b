// The board's side of the protocol, its faults and its memory, byte by byte.
#include "simulator/SimulatedBoard.h"
#include "link/TargetMap.h"
#include "tests/support/BoardTexts.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

/// Sends hexadecimal bytes one millisecond apart and writes down the answers: "." for silence, "X" for a hang-up, two
/// bytes without a blank for a doubled one. In between, "500ms" lets so much time pass between two bytes.
std::string Talk(SimulatedBoard& board, const std::string& sent) {
    std::istringstream words(sent);
    std::string heard;
    MonotonicTime now{0};
    for (std::string word; words >> word;) {
        if (word.ends_with("ms")) {
            now += std::chrono::milliseconds(std::stoi(word) - 1);
            continue;
        }
        const BoardAnswer answer = board.Receive(static_cast<std::uint8_t>(std::stoi(word, nullptr, 16)), now += 1ms);
        if (!heard.empty()) heard += ' ';
        if (answer.bytes.empty()) heard += answer.hangUp ? 'X' : '.';
        for (const std::uint8_t byte : answer.bytes) {
            for (const int digit : {byte >> 4, byte & 0xF})
                heard += "0123456789ABCDEF"[digit];
        }
    }
    return heard;
}

struct Conversation {
    const char *what, *fault, *sent, *heard;
    int at2005 = 0; ///< What address 0x2005 holds afterwards.
    const char* habits = "";
};

const Conversation Conversations[] = {
    // The protocol.
    {"an answer without a mode", "", "01 02 00 FF FE FF FF 03 01", "00 00 00 55 00 55 55 00 00"},
    {"read", "", "FF 01 20 00 20 01", "55 55 20 34 20 12"},
    {"write", "", "FF 02 20 05 AB 20 05 AC", "55 55 20 05 AB 20 05 AC", 0xAC},
    {"read page 0xFF", "", "FF 01 FF 10", "55 55 FF 77"},
    {"write page 0xFF", "", "FF 02 FF 10 12 FF FF 01 FF 10", "55 55 FF 10 12 FF 55 55 FF 12"},
    {"half-sent read", "", "FF 01 20 500ms FF 01 20 00", "55 55 20 55 55 20 34"},
    {"half-sent write", "", "FF 02 20 05 500ms FF", "55 55 20 05 55"},
    {"slow write of 0xFF", "", "FF 02 20 499ms 05 499ms FF", "55 55 20 05 FF", 0xFF},
    {"a mode outlasts a pause", "", "FF 01 20 00 500ms 20 01", "55 55 20 34 20 12"},
    // Faults.
    {"silence, byte taken", "no-answer:once@1", "FF 01 20 00", "55 . 20 34"},
    {"high echo", "wrong-echo:once", "FF 02 20 FF FF 02 20 05 AB", "55 55 DF 55 55 55 20 05 AB", 0xAB},
    {"low echo", "wrong-echo:once@3", "FF 02 20 05 FF 02 20 05 AB", "55 55 20 FA 55 55 20 05 AB", 0xAB},
    {"data echo", "wrong-echo:once@4", "FF 02 20 05 AB", "55 55 20 05 54", 0xAB},
    {"no sync is an echo", "wrong-echo:once", "FF 01 FF FF 01 20", "55 55 FF 55 55 DF"},
    {"data", "wrong-data", "FF 01 20 00 20 00 FF FF 02 20 05 AB", "55 55 20 CB 20 CB FF 55 55 20 05 AB", 0xAB},
    {"lost byte", "lost-byte:once@2", "FF 01 20 20 00", "55 55 . 20 34"},
    {"doubled bytes", "doubled-byte@1", "FF 01 20", "55 5555 2020"},
    {"hang-up", "hang-up@1", "FF 01", "55 X"},
    {"every answer spoiled, the board goes on", "spoiled-answer", "FF 02 20 05 AB", "AA AA DF FA 54", 0xAB},
    {"one bit of an echo", "spoiled-answer:once@2:01H", "FF 02 20 05 AB", "55 55 21 05 AB", 0xAB},
    {"an echo spoiled, and the sync is data", "spoiled-answer:once@3", "FF 02 20 05 FF FF FF", "55 55 20 FA FF FF 55",
     0xFF},
    {"an address spoiled", "spoiled-byte:once@2", "FF 02 20 05 AB", "55 55 DF 05 AB"},
    {"data spoiled", "spoiled-byte:once@4:80H", "FF 02 20 05 AB", "55 55 20 05 2B", 0x2B},
    {"a read becomes a write", "spoiled-byte:03H:once@1", "FF 01 20 05 AB", "55 55 20 05 AB", 0xAB},
    // Habits.
    {"40 ms keep", "", "FF 02 20 39ms 05 39ms AB", "55 55 20 05 AB", 0xAB, "half-sent=40ms"},
    {"40 ms forget", "", "FF 02 20 05 40ms FF", "55 55 20 05 55", 0, "half-sent=40ms"},
    {"kept for ever", "", "FF 02 20 600000ms 05 600000ms FF FF FF", "55 55 20 05 FF FF 55", 0xFF, "half-sent=forever"},
    {"a write mode stays", "", "FF 02 33 500ms 20 05 60ms AB", "55 55 33 20 05 AB", 0xAB, "after-half-sent=mode"},
    {"a write mode stays behind a low address", "", "FF 02 33 05 500ms 20 05 AB", "55 55 33 05 20 05 AB", 0xAB,
     "after-half-sent=mode"},
    {"a read mode stays", "", "FF 01 33 500ms 20 00", "55 55 33 20 34", 0, "after-half-sent=mode"},
    {"the first FF is a sync", "", "FF 02 FF 01 20 00", "55 55 55 55 20 34", 0, "sync-in-mode=first"},
    {"no FF is a sync", "", "FF 02 FF FF AB FF 500ms FF", "55 55 FF FF AB FF 55", 0, "sync-in-mode=never"},
    {"echoing while idle", "", "01 20 FF 03 20 FF 01", "01 20 55 03 20 55 55", 0, "idle=echo"},
    {"refused", "", "FF 02 20 05 AB", "55 55 20 05 AB", 0, "refuse=W8196"},
    {"refused range", "", "FF 02 20 05 AB", "55 55 20 05 AB", 0, "refuse=B1 refuse=B8190-2005H"},
    {"refused beside it", "", "FF 02 20 05 AB", "55 55 20 05 AB", 0xAB, "refuse=W8195 refuse=B8198-B9000"},
};

TEST(SimulatedBoard, ConversationsGoAsWritten) {
    for (const Conversation& one : Conversations) {
        SCOPED_TRACE(one.what);
        SimulatedBoard board({}, HabitsOf(one.habits));
        board.PokeWord(0x2000, 0x1234);
        board.Poke(0xFF10, 0x77);
        if (*one.fault) board.AddFault(ParseFault(one.fault).value());
        EXPECT_EQ(Talk(board, one.sent), one.heard);
        EXPECT_EQ(board.Peek(0x2005), one.at2005);
        EXPECT_EQ(board.Peek(0x20FF), 0) << "a sync ended up in memory";
    }
}

TEST(SimulatedFaults, HabitsAndFaultsAreParsedByNameAndNothingElseIs) {
    for (const HabitName& each : HabitNames()) {
        for (const char* value : {"", "=", "=x", "=0", "=12m"})
            EXPECT_FALSE(WithHabit({}, std::string(each.name) + value)) << each.name << value;
    }
    for (const char* text :
         {"", "=echo", "idel=echo", "half-sent=-1ms", "half-sent=3601s", "refuse=B5-B4", "refuse=B65536", "refuse=B5-",
          "status=31:05", "status=4", "status=4:", "status=4:G", "status=4:05:11s", "status=:05", "status=4:05:"})
        EXPECT_FALSE(WithHabit({}, text)) << text;
    EXPECT_EQ(WithHabit(WithHabit({}, "idle=echo").value(), "idle=zero"), BoardHabits{});
    for (const FaultName& each : FaultNames()) {
        const SimulatedFault plain = ParseFault(each.name).value();
        EXPECT_TRUE(plain.kind == each.kind && !plain.firstTimeOnly) << each.name;
        for (const char* how : {":once@120", "@120:once"}) {
            const SimulatedFault once = ParseFault(std::string(each.name) + how).value();
            EXPECT_TRUE(once.firstTimeOnly && once.afterBytes == 120) << each.name << how;
        }
    }
    for (const char* text : {"", "hang", "hang-up@", "hang-up@x", "hang-up@-1", "hang-up@1x", "hang-up:once@1:once",
                             "hang-up:twice", ":once", "hang-up@99999999999999999999", "hang-up:60ms", "late-answer:60",
                             "late-answer:1ms:2ms", "spoiled-byte:00H", "spoiled-byte:100H", "spoiled-answer:1"})
        EXPECT_FALSE(ParseFault(text)) << text;
}

TEST(SimulatedFaults, ASequenceShowsTheStatusThatItsBoardWasGivenAlwaysOrForAWhile) {
    SimulatedBoard board({}, WithHabit(WithHabit({}, "status=4:112").value(), "status=9:0C:1s").value());
    const auto status = [&](std::uint16_t sequence, MonotonicTime now) {
        return board.PeekWord(static_cast<std::uint16_t>(StatusWordBase + 2 * sequence), now);
    };
    EXPECT_EQ(status(4, 3s), 0x112);
    EXPECT_EQ(status(9, 8999ms) + status(9, 20s), 0);
    EXPECT_EQ(status(9, 9s) + status(9, 19999ms), 2 * 0x0C);
    EXPECT_EQ(status(5, 9s) + board.PeekWord(StatusWordBase - 2, 9s), 0);
}

TEST(SimulatedFaults, LateAnswerIsLateByOneAndAHalfSecondsOrAsSaid) {
    SimulatedBoard board;
    for (const char* text : {"late-answer:once", "late-answer:60ms:once", "late-answer@2:once:3s"})
        board.AddFault(ParseFault(text).value());
    for (const MonotonicTime delay : {1500ms, 60ms, 3000ms, 0ms})
        EXPECT_EQ(board.Receive(0xFF, 0s).delay, delay);
}

std::uint16_t Word(const SimulatedBoard& board, int address, MonotonicTime now = {}) {
    return board.PeekWord(static_cast<std::uint16_t>(address), now);
}

void Use(SimulatedBoard& board, int sequence, std::uint16_t node, std::uint16_t words) {
    for (const auto& [field, value] : {std::pair{0, node}, {1, words}, {4, words}})
        board.PokeWord(static_cast<std::uint16_t>(SequenceBase + SequenceStride * sequence + 2 * field), value);
}

TEST(BoardMemory, StatusFollowsTheNodeNumberAndASilentNodeSendsNothingNew) {
    SimulatedBoard board;
    Use(board, 0, 2, 10);
    Use(board, 1, 33, 10);
    Use(board, 30, 13, 10);
    int looseNodeFailed = 0;
    for (MonotonicTime now = 0s; now < 60s; now += 1s) {
        EXPECT_EQ(Word(board, StatusWordBase, now), 2);
        EXPECT_EQ(Word(board, StatusWordBase + 2, now), 5);
        EXPECT_EQ(Word(board, StatusWordBase + 4, now), 0);
        looseNodeFailed += Word(board, StatusWordBase + 60, now) == 5;
    }
    EXPECT_EQ(looseNodeFailed, 6);
    const int received = ReceiveDataBase + SequenceStride * 30;
    EXPECT_EQ(Word(board, received, 27s), Word(board, received, 29s));
    EXPECT_NE(Word(board, received, 29s), Word(board, received, 31s));
}

TEST(BoardMemory, DataWordsLiveAsFarAsTheyAreUsed) {
    SimulatedBoard board;
    Use(board, 30, 2, 120);
    Use(board, 7, 2, 3);
    for (const int base : {SendDataBase, ReceiveDataBase}) {
        for (int word = 0; word < DataWordCount; ++word) {
            for (const auto& [sequence, used] : {std::pair{30, 120}, {7, 3}}) {
                const int address = base + SequenceStride * sequence + 2 * word;
                EXPECT_EQ(Word(board, address, 1s) != Word(board, address, 8s), word < used) << address;
            }
        }
    }
}

TEST(BoardMemory, AWordReadByteByByteIsOneValue) {
    SimulatedBoard board;
    Use(board, 0, 2, 2);
    ASSERT_EQ(Word(board, SendDataBase + 2, 224999ms), 0x00FF);
    ASSERT_EQ(Word(board, SendDataBase + 2, 225s), 0x0100);
    for (const std::uint8_t byte : std::initializer_list<std::uint8_t>{0xFF, 0x01, 0x40})
        static_cast<void>(board.Receive(byte, 224998ms));
    EXPECT_EQ(board.Receive(0x12, 224999ms).bytes.at(0), 0xFF);
    static_cast<void>(board.Receive(0x40, 225001ms));
    EXPECT_EQ(board.Receive(0x13, 225002ms).bytes.at(0), 0x00);
}

/// Month, day, year, hour, minute, second as the board shows them.
std::string Shown(const SimulatedBoard& board, MonotonicTime now) {
    std::ostringstream text;
    for (const int address :
         {ClockMonthByte, ClockDayByte, ClockYearByte, ClockHourByte, ClockMinuteByte, ClockSecondByte})
        text << int{board.Peek(static_cast<std::uint16_t>(address), now)} << ' ';
    return text.str();
}

TEST(BoardClock, RunsOverTheYearAndTheLeapDay) {
    using namespace std::chrono;
    const SimulatedBoard board(local_days{2026y / December / 31} + 23h + 59min + 58s);
    EXPECT_EQ(Shown(board, 1999ms), "12 31 26 23 59 59 ");
    EXPECT_EQ(Shown(board, 3s), "1 1 27 0 0 1 ");
    EXPECT_EQ(Shown(board, 24h * 424 + 2s), "2 29 28 0 0 0 ");
}

TEST(BoardClock, CanBeSetRegisterByRegister) {
    using namespace std::chrono;
    SimulatedBoard board(local_days{2026y / March / 31} + 10h);
    const std::pair<int, int> registers[] = {{ClockMonthByte, 2}, // 31 February, for a moment
                                             {ClockDayByte, 28},    {ClockYearByte, 27},  {ClockHourByte, 23},
                                             {ClockMinuteByte, 59}, {ClockSecondByte, 58}};
    for (const auto& [byte, value] : registers)
        board.Poke(static_cast<std::uint16_t>(byte), static_cast<std::uint8_t>(value), 10500ms);
    EXPECT_EQ(Shown(board, 12400ms), "2 28 27 23 59 59 ");
    EXPECT_EQ(Shown(board, 12500ms), "3 1 27 0 0 0 ");
    board.Poke(ClockHourByte, 24, 20s);
    board.Poke(ClockMonthByte, 0, 20s);
    EXPECT_EQ(Shown(board, 20500ms), "3 1 27 0 0 8 ");
}

} // namespace
} // namespace vantrel
