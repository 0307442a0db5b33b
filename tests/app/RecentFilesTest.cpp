// The recent files in their order, and what of a path stands in a menu.
#include "app/RecentFiles.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

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
