// One value of a file, and what the sequences do on the board.
#include "link/StatusAdvice.h"
#include "simulator/BoardHabits.h"
#include "tests/console/ConsoleFixture.h"

#include <nlohmann/json.hpp>

#include <tuple>

namespace vantrel {

namespace {

TEST_F(ConsoleTest, SetStoresWhatTheEditorWouldStore) {
    const std::string file = Imported("plant.sdt");
    EXPECT_EQ(Run({"set", File("plant"), "1", "sendtonode", "w1024"}).out, file + "\nsequence 1, SendToNode: W1024\n");
    EXPECT_EQ(Run({"set", file, "0", "ReceiveFromNode", "1a0h"}).out, file + "\nsequence 0, ReceiveFromNode: 1A0H\n");
    EXPECT_EQ(Run({"set", file, "statusstackaddress", "v500"}).out, file + "\nstatus stack address: V500\n");
    EXPECT_EQ(RecordOf(file).Value(StatusStackIndex), 500);
    const Ended described = Run({"set", file, "30", "NODEDESCRIPTION", "F\u00FCller \u03A9"});
    EXPECT_EQ(described.out, file + "\nsequence 30, NodeDescription: F\u00FCller ?\n");
    EXPECT_EQ(CountOf(described.err, "cannot hold"), 1U);
    EXPECT_EQ(Run({"set", file, "0", "NodeDescription", ""}).err, "");
    const std::string shown = Run({"show", file, "--all"}).out;
    for (const char* row :
         {"\n    0       2      10     V200      W32         20       1A0H   V300\n",
          "\n    1       3       1     V400    W1024          2      FFFEH   V500  Second\n", " V1  F\u00FCller ?\n"})
        EXPECT_NE(shown.find(row), std::string::npos) << shown;
}

TEST_F(ConsoleTest, SetChangesNothingWhenItRefuses) {
    const std::string file = Imported("plant.sdt");
    const std::string before = FileText(file);
    WriteText(File("plant.old"), before);
    const std::vector<std::tuple<std::string, int, std::string>> cases = {
        {"@plant.sdt 0 NodeNumber 1", 1, "VANTREL Configuration: Only a Number Between 2 and 32 can be Entered\n"},
        {"@plant.sdt 0 SendToNode AH", 1, "Error Number = 5\nInvalid procedure call or argument\n"},
        {"@plant.sdt StatusStackAddress 34464", 1, "Between 1 and 34463 can be Entered\nNothing was stored."},
        {"@plant.sdt StatusStackAddress", 2, "Say what to set"},
        {"@plant.sdt 0 NodeNumber", 2, "a SEQUENCE, its FIELD and the VALUE, or StatusStackAddress and the VALUE."},
        {"@plant.sdt 0 Node 2", 2, "There is no field \"Node\". The fields are NodeNumber, "},
        {"@plant.sdt 31 NodeNumber 2", 2, "There is no sequence \"31\". Sequence numbers go from 0 to 30."},
        {"@missing 0 NodeNumber 2", 4, "missing"},
        {"@plant.old 0 NodeNumber 2", 1, "Nothing was stored."},
    };
    for (const auto& [arguments, code, said] : cases)
        EXPECT_EQ(Expect(code, "set " + arguments, {said}).out + FileText(file), before) << said;
}

TEST_F(ConsoleTest, StatusShowsTheBoardAsTheWindowsDo) {
    Imported("plant.sdt");
    Expect(0, "download @plant.sdt --port 1 --yes");
    const Ended all =
        Expect(0, "status --port 1", {"\n    1       3  02: Comm to Node OK\n    2       0  00: Comm Disabled\n"});
    EXPECT_EQ(CountOf(all.out, "\n"), 32U);
    const Ended one =
        Expect(0, "status --port 1 --sequence 1 --file @plant.sdt",
               {"Node Number:      3\nDescription:      Second\nStatus:           02: Comm to Node OK\n",
                "# Send   1      # Receive  2\nFrom TI  V400   From Node  FFFEH\nTo Node  2000H  To TI      V500\n"});
    EXPECT_EQ(CountOf(one.out.substr(one.out.find("Receive Data\n")), "\n"), 3U) << "as many rows as words";

    board.PokeWord(16896 + 2, 60000);
    const Ended noFile =
        Expect(0, "status --port 1 --sequence 1", {"Description:      -\n", "From Node  W65534\n", "\n 120 "});
    EXPECT_EQ(noFile.out.find("\n 121 "), std::string::npos) << "no more words than there are";
    Expect(2, "status --port 1 --file @plant.sdt");
}

TEST_F(ConsoleTest, StatusSaysWhyASequenceFailsAndEndsWithOneWhenThatIsChecked) {
    board.SetHabits(WithHabit({}, "status=4:05").value());
    board.PokeWord(16384 + 4 * 512, 5);
    const std::string remedy = std::string(AdviceOn(5).remedy);
    Expect(0, "status --port 1", {"\n05: No Slave Response, Timeout (sequence 4)\n", remedy});
    Expect(1, "status --port 1 --check", {"At least one sequence is failing."});
    Expect(0, "status --port 1 --check --sequence 3");
    Expect(1, "status --port 1 --check --sequence 4", {"\nRemedy:           " + remedy + "\n"});
    const auto json = nlohmann::json::parse(Run(Words("status --json --port 1")).out);
    EXPECT_EQ(json[4]["state"], "failing");
    EXPECT_EQ(json[4]["remedy"], remedy);
    EXPECT_EQ(json[3]["state"], "disabled");
    board.PokeWord(16384 + 4 * 512, 0);
    Expect(0, "status --port 1 --check", {"\nSequence 4 has node 0: it counts as disabled.\n"});
    board.SetHabits(WithHabit(WithHabit({}, "status=4:05").value(), "status=7:05").value());
    Expect(0, "status --port 1 --check", {"\nSequences 4 and 7 have node 0: they count as disabled.\n"});
}

TEST_F(ConsoleTest, AWatchPrintsEveryChangeWithItsTimeUntilItIsOverOrInterrupted) {
    board.SetHabits(WithHabit({}, "status=4:05:2s").value());
    board.PokeWord(16384 + 4 * 512, 5);
    // The node fails for two seconds of every ten: from the eighth on, and the line has taken its time, too.
    const Ended ended = Expect(1, "status --port 1 --watch --for 12s --check",
                               {"2026-03-14 09:05:15  sequence  4  05: No Slave Response, Timeout (was 02: Comm to "
                                "Node OK)\n2026-03-14 09:05:17  sequence  4  02: Comm to Node OK (was 05: "});
    EXPECT_EQ(CountOf(ended.out, "\n"), 1U + 31 + 2);
    Expect(0, "status --port 1 --watch --for 1s --check", {"sequence  4  02: Comm to Node OK\n"});

    clock.interruptAt = clock.Now() + std::chrono::seconds(10);
    std::istringstream lines(Expect(0, "status --port 1 --watch --json").out);
    std::vector<nlohmann::json> changes;
    for (std::string line; std::getline(lines, line);)
        changes.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(changes.size(), 1U + 31 + 2);
    EXPECT_EQ(changes[32]["sequence"], 4);
    EXPECT_EQ(changes[32]["statusCode"], 5);
    EXPECT_EQ(changes[32]["state"], "failing");
    EXPECT_TRUE(changes[1]["lookedAtBefore"].is_null() && changes[32]["lookedAtBefore"].is_string());
    clock.interrupted = false;

    board.AddFault({.kind = FaultKind::HangUp, .afterBytes = board.ReceivedBytes() + 500});
    Expect(3, "status --port 1 --watch", {"  The link to the board failed\n"});
    for (const char* wrong : {"--watch --for 10", "--for 10m", "--watch --for 0s", "--watch --sequence 3"})
        Expect(2, std::string("status --port 1 ") + wrong);
}

TEST_F(ConsoleTest, ResultsAsJsonNameSequencesAndFields) {
    Imported("plant.sdt");
    const auto json = [this](const std::string& line) {
        return nlohmann::json::parse(Run(Words(line + " --json --port 1")).out);
    };
    const auto compared = json("compare @plant.sdt");
    EXPECT_EQ(compared["equal"], false);
    const auto& differences = compared["differences"];
    EXPECT_EQ(differences[0], nlohmann::json::parse(R"({"field":"StatusStackAddress","file":100,"board":1})"));
    EXPECT_EQ(differences[1], nlohmann::json::parse(R"({"sequence":0,"field":"NodeNumber","file":2,"board":0})"));
    Expect(0, "download @plant.sdt --port 1 --yes");
    EXPECT_EQ(json("compare @plant.sdt")["equal"], true);
    const auto read = json("read W16896-W16899 B8180 F13-F14 B8176.6-B8177.1");
    EXPECT_EQ(read[0], nlohmann::json::parse(R"({"address":"W16896","sequence":1,"field":"NodeNumber","value":3})"));
    std::string addresses;
    for (const auto& each : read)
        addresses += each["address"].get<std::string>() + " ";
    EXPECT_EQ(addresses, "W16896 W16898 B8180 F13 F14 B8176.6 B8176.7 B8177.0 B8177.1 ");
    EXPECT_EQ(read[2]["value"], 1);
    EXPECT_EQ(json("status")[1], nlohmann::json::parse(R"({"sequence":1,"NodeNumber":3,"statusCode":2,
                                                            "status":"02: Comm to Node OK","state":"OK"})"));
    const auto one = json("status --sequence 1 --file @plant.sdt");
    EXPECT_EQ(one["description"], "Second");
    EXPECT_EQ(one["SendFromTI"], "V400");
    EXPECT_EQ(one["receiveData"].size(), 2U);
    const auto state = json("board");
    EXPECT_EQ(state["networkAddress"], 1);
    EXPECT_EQ(state["currentFault"]["code"], 0);
    EXPECT_EQ(state["model"], nullptr) << "no user program on disk";
}

} // namespace

} // namespace vantrel
