// The report for support on a console: listed first, written when the user agrees, over nothing that was there.
#include "tests/console/ConsoleFixture.h"

namespace vantrel {
namespace {

TEST_F(ConsoleTest, AReportForSupportIsListedBeforeItIsWrittenAndTakesNoOtherFilesPlace) {
    const std::string plant = Imported("plant.sdt");
    WriteText(File("line.trace"), "traced");
    const auto archive = [&] {
        const std::vector<std::uint8_t> bytes = ReadWholeFile(File("out.zip"));
        return std::string(bytes.begin(), bytes.end());
    };
    const std::vector<std::string> listed{"versions.txt", "plant.sdt     the set-up file (",
                                          "line.trace    a file that was named (6 bytes)\n"};
    Expect(1, "support @out @plant --add @line.trace", listed, "n\n");
    EXPECT_FALSE(std::filesystem::exists(File("out.zip")));
    EXPECT_EQ(Expect(0, "support @out @plant --add @line.trace", listed, "y\n").out, File("out.zip") + "\n");
    EXPECT_TRUE(archive().starts_with("PK\3\4"));
    EXPECT_NE(archive().find("traced"), std::string::npos);
    Expect(1, "support @out.zip", {"out.zip"}, "y\nn\n");
    EXPECT_NE(archive().find("traced"), std::string::npos) << "asked once more before it is replaced";
    Expect(4, "support @out.zip --yes --add @gone", {"Left out: "});
    EXPECT_EQ(archive().find("traced"), std::string::npos);
}

} // namespace
} // namespace vantrel
