// The command line: exit codes, help, and what is said about what cannot be.
#include "app/Program.h"
#include "tests/console/ConsoleFixture.h"

#include <tuple>

namespace vantrel {

namespace {

TEST_F(ConsoleTest, EveryWayToGoWrongHasItsExitCodeAndSaysWhatToDo) {
    const std::string file = Imported("plant.sdt");
    WriteText(File("text.sdt"), "no set-up file");
    const std::vector<std::tuple<std::vector<std::string>, int, const char*>> cases = {
        {{"downlaod", file}, 2, "There is no command \"downlaod\".\nSee vantrelctl --help."},
        {{"show"}, 2, "FILE is required"},
        {{"show", "--jason", "--alll"}, 2, "were not expected: --jason --alll"},
        {{"show", file, "b", "c"}, 2, "were not expected: b c\nSee vantrelctl show --help"},
        {{"compare", file}, 2, "or --port for the board"},
        {{"compare", file, "--port", "0"}, 2, "Port numbers here go from 1 to"},
#ifndef _WIN32
        {{"compare", file, "--port", "COM2"}, 2, "Did you mean --port 2?"},
#endif
        {{"compare", file, "--port", "Simulated"}, 2, "Did you mean --port simulated?"},
        {{"compare", file, "--port"}, 2, "--port: a value is missing"},
        {{"compare", file, "--port", "1", "--port", "2"}, 2, "--port: At Most 1 required but received 2"},
        {{"compare", file, "--port", ""}, 2, "empty"},
        {{"compare", file, "--port", "1", "--speed", "300"}, 2, "--speed: 300 not in {9600,19200}"},
        {{"read", "W16384", "nonsense", "--port", "1"}, 2, "\"nonsense\" is not an address"},
        {{"read", "B65536", "--port", "1"}, 2, "outside"},
        {{"read", "W8-B9", "--port", "1"}, 2, "\"W8-B9\" is no range of addresses: its two ends are of"},
        {{"read", "F9-F8", "--port", "1"}, 2, "it ends before it begins"},
        {{"read", "W8-", "--port", "1"}, 2, "is not an address"},
        {{"write", "W16384", "", "--port", "1"}, 2, "empty"},
        {{"write", "W16384", "--port", "1"}, 2, "VALUE is required"},
        {{"write", "W16384", "-5", "--port", "1"}, 1, "Only Numerical Data Allowed."},
        {{"write", "B8", "256", "--port", "1"}, 1, "ENTRY ALERT: Error:\nEntry out of Range (0-255)."},
        {{"simulate", "--fault", "hang-pu"}, 2, "hang-up"},
        {{"simulate", "--speed", "-1"}, 2, "--speed: Value -1 not in range 0 to 10000000"},
        {{"new", "."}, 2, "no file name"},
        {{"new", folder.string() + "/"}, 2, "no file name"},
        {{"upload", File(".x"), "--port", "1", "--yes"}, 2, "no file name"},
        {{"download", file, "--port", "1", "--yes", "--trace", file}, 2, "the set-up file itself"},
        {{"download", File("plant"), "--port", "1", "--yes", "--trace", File("./plant.sdt")}, 2, "itself"},
        {{"upload", File("new"), "--port", "1", "--yes", "--trace", File("new.sdt")}, 2, "itself"},
        {{"read", "W1", "--port", File("device"), "--trace", File("device")}, 2, "the port itself"},
        {{"show", File("missing.sdt")}, 4, "missing.sdt"},
        {{"show", File("text.sdt")}, 4, "import makes a set-up file"},
        {{"download", File("missing.sdt"), "--port", "1", "--yes"}, 4, "missing.sdt"},
        {{"new", File("nowhere/plant.sdt")}, 4, "nowhere"},
        {{"read", "W1", "--port", "1", "--trace", File("nowhere/trace")}, 4, "No such file"},
        {{"upload", File("nowhere/plant.sdt"), "--port", "1", "--yes"}, 4, "there is no folder"},
    };
    for (const auto& [arguments, code, said] : cases)
        EXPECT_EQ(Expect(code, arguments, {said}).out, "") << said;
    EXPECT_EQ(RecordOf(file).Value(StatusStackIndex), 100);
}

#ifdef __unix__
TEST_F(ConsoleTest, ThePortsOfTheComputerAreListedWithWhatStandsBehindTheirNumbers) {
    std::filesystem::create_directory(folder / "Support");
    std::filesystem::create_symlink("/dev/null", folder / "Support" / "COM14");
    Expect(0, "ports", {"COM14  /dev/null\n"});
    Expect(0, "ports --json", {"\"port\": \"14\""});
}
#endif

TEST_F(ConsoleTest, AMissingProgramFolderIsWrongUsage) {
    std::filesystem::remove_all(folder);
    EXPECT_EQ(Run({"read", "W1", "--port", "1"}).code, 2);
}

TEST_F(ConsoleTest, HelpOfEveryCommandHasExamplesAndExitCodes) {
    const Ended overall = Expect(0, "--help");
    EXPECT_EQ(overall.err, "");
    for (const std::string command :
         {"new", "show", "import", "download", "upload", "compare", "read", "write", "simulate", "demo"}) {
        EXPECT_NE(overall.out.find("\n  " + command + " "), std::string::npos) << command;
        Expect(0, command + " --help", {"Examples:\n  vantrelctl " + command, "Exit codes:"});
    }
    EXPECT_EQ(Run({"help"}).out, overall.out);
    EXPECT_EQ(Run({"--version"}).out, "vantrelctl " + VersionNumber() + "\n");
    Expect(0, "help simulate", {"late-answer"});
}

TEST_F(ConsoleTest, APortNumberUsesTheSettingsFileAsTheWindowsDoAndADeviceLeavesItAlone) {
    const std::string settings = File("Support/RSPort.cfg");
    Expect(0, "read W6400 --port /dev/some-device");
    EXPECT_FALSE(std::filesystem::exists(settings));
    EXPECT_EQ(port->Settings(), "9600,n,8,1");

    Expect(0, "read W6400 --port 2 --speed 19200");
    EXPECT_EQ(FileText(settings).substr(0, 6), "1,9600");
    EXPECT_EQ(port->PortNumber(), 2);
    EXPECT_EQ(port->Settings(), "19200,n,8,1");

    WriteText(settings, "3,19200\n");
    Expect(0, "read W6400 --port /dev/some-device");
    EXPECT_EQ(port->Settings(), "19200,n,8,1") << "the stored speed";
    EXPECT_EQ(FileText(settings), "3,19200\n");
}

} // namespace

} // namespace vantrel
