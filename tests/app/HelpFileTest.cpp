// The help text is cut into topics and searched; the system-information tool is found where the registry says.
#include "app/HelpFile.h"
#include "app/SystemInfo.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <map>

namespace vantrel {
namespace {

TEST(HelpFile, TopicsAreFoundByNameAndByEveryWord) {
    const HelpFile help("left out\n# First steps {#first}\r\nSee [the cable](#cable).\n## Step 1\n# Nameless\nWord\n"
                        "# Cabling {#cable}\nThe null-modem CABLE.\n");
    ASSERT_EQ(help.Topics().size(), 3U);
    EXPECT_EQ(help.Topics()[0].title, "First steps");
    EXPECT_EQ(help.Topics()[0].text, "# First steps\nSee [the cable](#cable).\n## Step 1\n");
    EXPECT_EQ(help.Find("cable"), 2U);
    EXPECT_EQ(help.Find("nowhere"), std::nullopt);
    using Found = std::vector<std::size_t>;
    EXPECT_EQ(help.Search("Cable"), (Found{0, 2}));
    EXPECT_EQ(help.Search(" cable  NULL "), Found{2});
    EXPECT_EQ(help.Search("  "), (Found{0, 1, 2}));
    EXPECT_EQ(help.Search("cable word"), Found{});
}

TEST(HelpFile, ARowIsFoundByItsWordsAndByTheMessageThatItExplains) {
    const HelpFile help("# One {#one}\nThe disk is full\n# Two {#two}\n"
                        "| Message | Cure |\n|---|---|\n"
                        "| The disk is `full`: \"...\" was not written. | make *room* |\n"
                        "| Only from ... to ...; Not ... (WARNING!) | see [there](#one) |\n"
                        "\n| Other | Table |\n|---|---|\n| COM...: free. / COM...: busy. | disk |\n");
    using Row = std::optional<std::size_t>;
    EXPECT_EQ(help.FindRow(1, "DISK room"), Row{1});
    EXPECT_EQ(help.FindRow(1, "disk", 2), Row{4}) << "rows are counted over all tables, headings included";
    EXPECT_EQ(help.FindRow(1, "disk there"), Row{}) << "all words in one row";
    EXPECT_EQ(help.FindRow(1, "there"), Row{2});
    EXPECT_EQ(help.FindRow(0, "disk"), Row{});
    EXPECT_EQ(help.FindRow(1, " "), Row{});
    for (const auto& [message, row] :
         {std::pair{"MDIMain FileSave: The disk is full:\n\"a.sdt\" was not written.", Row{1}},
          {"WARNING!: Not 5 of them", {}},
          {"Only from 2 to 32", Row{2}},
          {"COM3 (x): busy.", Row{4}},
          {"Something else", {}}}) {
        const auto found = help.FindMessage(message);
        EXPECT_EQ(found ? Row{found->row} : Row{}, row) << message;
    }
}

TEST(HelpFile, AFileThatIsMissingOrNoHelpIsNamed) {
    const TemporaryFolder folder;
    const auto error = [&folder](const char* name) {
        const auto failed = Thrown([&] { return HelpFile::Read(folder / name); });
        EXPECT_TRUE(failed && failed->Description().find(name) != std::string::npos) << name;
        return failed ? failed->Number() : 0;
    };
    WriteText(folder / "empty.hlp", "no heading\n");
    EXPECT_EQ(error("missing.hlp"), 53);
    EXPECT_EQ(error("empty.hlp"), 321);
    std::filesystem::create_directory(folder / "folder.hlp");
    EXPECT_EQ(error("folder.hlp"), 75) << "read like every other file: pipes and devices are refused as well";
}

TEST(SystemInfo, ThePathComesFirstThenTheFolderIfTheToolIsThere) {
    const std::string path = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO|PATH)";
    const std::string folder = R"(SOFTWARE\Microsoft\Shared Tools Location|MSINFO)";
    // The registry, whether the tool is there and starts, what is started and how many boxes come up.
    using Case = std::tuple<std::map<std::string, std::string>, bool, bool, std::string, std::size_t>;
    for (const auto& [registry, exists, starts, started, boxes] :
         {Case{{{path, "C:\\a.exe"}, {folder, "C:\\Shared"}}, true, true, "C:\\a.exe", 0},
          Case{{{folder, "C:\\Shared"}}, true, true, "C:\\Shared\\MSINFO32.EXE", 0},
          Case{{{folder, "C:\\Shared"}}, false, true, "", 1}, Case{{}, true, true, "", 1},
          Case{{{path, "C:\\a.exe"}}, true, false, "C:\\a.exe", 1}}) {
        ScriptedDialogs dialogs;
        std::string tried;
        const auto look = [&known = registry](RegistryRoot root, const std::string& key, const std::string& name) {
            EXPECT_EQ(root, RegistryRoot::LocalMachine);
            const auto found = known.find(key + "|" + name);
            return found == known.end() ? std::nullopt : std::optional(found->second);
        };
        const auto start = [&tried, can = starts](const std::string& tool) {
            tried = tool;
            return can;
        };
        StartSysInfo({look, [is = exists](const std::string&) { return is; }, start}, dialogs);
        EXPECT_EQ(tried, started);
        ASSERT_EQ(dialogs.shown.size(), boxes);
        EXPECT_TRUE(boxes == 0 || dialogs.shown[0].text == "System Information Is Unavailable At This Time");
    }
}

} // namespace
} // namespace vantrel
