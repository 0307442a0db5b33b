// Which board answers, which one a file was for, and the files used last.
#include "app/KnownBoards.h"
#include "app/RecentFiles.h"

#include "link/TargetMap.h"
#include "tests/support/BoardLink.h"

namespace vantrel {
namespace {

class KnownBoardsTest : public BoardLink<> {
protected:
    std::optional<BoardIdentity> Ask() {
        std::optional<BoardIdentity> identity;
        const auto ask = [&]() -> Task { identity = co_await ReadBoardIdentity(link, turns, [] { return true; }); };
        turns.RunToEnd(ask());
        return identity;
    }
    const std::filesystem::path memory = folder / "user" / "Boards.txt";
    KnownBoards boards{memory};
};

TEST_F(KnownBoardsTest, ABoardIsWhatItsAddressAndIdentSayOrUnknown) {
    Open();
    board.Poke(NetworkAddressByte, 3, clock.Now());
    board.Poke(RevisionIdentBase, 0, clock.Now());
    ASSERT_TRUE(Ask());
    EXPECT_EQ(Ask()->Text(), "network address 3, program ident \" 5216505\"");
    board.AddFault({.kind = FaultKind::DoubledByte});
    EXPECT_FALSE(Ask()) << "a board that was not read clearly is no other board";
}

TEST_F(KnownBoardsTest, ABoardIsKnownAgainByItsTextAndByNoOther) {
    for (const auto& [text, known] : {std::pair("network address 3, program ident \" 5\"16505\"", true),
                                      {"network address 256, program ident \"K\"", false},
                                      {"network address 3, program ident ", false},
                                      {"network address 03, program ident \"K\"", false},
                                      {"", false}}) {
        const auto read = BoardIdentity::FromText(text);
        EXPECT_EQ(read ? read->Text() : "", known ? text : "");
    }
}

TEST_F(KnownBoardsTest, AFileIsRememberedWithTheBoardNotedLast) {
    const std::filesystem::path odd = "/a\t\"b\n.sdt";
    EXPECT_FALSE(boards.Of(odd));
    for (const int address : {3, 4}) {
        boards.Note(odd, {address, "K5216505"});
        boards.Note("/other", {1, " \"x\" "});
    }
    EXPECT_EQ(boards.Of(odd), (BoardIdentity{4, "K5216505"}));
    EXPECT_EQ(boards.Of("/other"), (BoardIdentity{1, " \"x\" "}));
    WriteText(memory, "\"/x\r\n/y\t300\tK\r\n\t1\tK\r\n");
    EXPECT_FALSE(boards.Of("/y"));
    std::string full;
    for (std::size_t i = 0; i < KnownBoards::Most; ++i)
        full += "/" + std::to_string(i) + "\t1\tK\r\n";
    WriteText(memory, full);
    boards.Note("/new", {1, "K"});
    EXPECT_TRUE(boards.Of("/new") && boards.Of("/498") && !boards.Of("/499")) << "the oldest goes";
}

TEST(RecentFilesTest, TheNewestIsInFrontOnceAndFiveAreKept) {
    RecentFiles recent({"/b", "", "/a", "/b"});
    EXPECT_FALSE(recent.Note("/b"));
    for (const char* file : {"/c", "/d", "/a", "/e", "/f"})
        EXPECT_TRUE(recent.Note(file));
    std::string order;
    for (const auto& file : recent.List())
        order += file.string();
    EXPECT_EQ(order, "/f/e/a/d/c");
}

TEST(RecentFilesTest, ACaptionKeepsTheFileNameAndItsOneAccessKey) {
    EXPECT_EQ(RecentCaption(0, "/a&b/c\n.sdt"), "&1 /a&&b/c?.sdt");
    const std::string deep = "/" + std::string(50, 'x') + "/" + std::string(20, 'y') + "/plant.sdt";
    EXPECT_EQ(RecentCaption(4, deep), "&5 ..." + deep.substr(51));
    // No character is cut in two.
    std::string umlauts = "/x";
    for (int i = 0; i < 40; ++i)
        umlauts += "\xC3\xA4";
    EXPECT_EQ(RecentCaption(1, umlauts).size(), std::string("&2 ...").size() + 60);
    EXPECT_EQ(RecentCaption(1, umlauts + "x").size(), std::string("&2 ...").size() + 59);
}

} // namespace
} // namespace vantrel
