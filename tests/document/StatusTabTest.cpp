// One pass over the status tab, against the simulated board: which rows are read, how they are shown, what ends it.
#include "document/StatusTab.h"

#include "tests/support/BoardLink.h"

#include <functional>
#include <set>

namespace vantrel {
namespace {

using Texts = std::vector<std::string>;

class StatusTabTest : public BoardLink<>, public StatusTabDisplay {
protected:
    StatusTabTest() {
        Open();
        board.PokeWord(16384 + 512 * 30, 32);
    }
    Texts Pass() {
        shown.clear();
        Task pass = RefreshStatusTab(*this, nodeNumbers, statusWords, link, turns);
        turns.RunToEnd(pass);
        return shown;
    }
    [[nodiscard]] bool StatusWanted() const override { return wanted; }
    [[nodiscard]] bool RowVisible(int row) const override { return visible.contains(row); }
    void ShowNode(int row, const std::string& text) override { Show(row, "node " + text); }
    void ShowStatus(int row, const std::string& text) override { Show(row, text); }
    void Show(int row, const std::string& text) {
        shown.push_back(std::to_string(row) + " " + text);
        if (onShow) onShow();
    }

    const SequenceAddresses nodeNumbers = NodeNumberAddressTable();
    const SequenceAddresses statusWords = StatusWordAddressTable();
    std::set<int> visible{1, 2, 31};
    bool wanted = true;
    std::function<void()> onShow;
    Texts shown;
};

TEST_F(StatusTabTest, ReadsNodeAndStatusOfTheVisibleRowsInOrder) {
    const Texts all = Pass();
    ASSERT_EQ(all.size(), 6U);
    EXPECT_EQ(Texts(all.begin(), all.begin() + 5),
              (Texts{"1 node 0", "1 00: Comm Disabled", "2 node 0", "2 00: Comm Disabled", "31 node 32"}));
    EXPECT_TRUE(all.back().starts_with("31 0")) << all.back();
    visible.clear();
    EXPECT_EQ(Pass(), Texts{});
}

TEST_F(StatusTabTest, EndsBetweenTheTwoValuesOfARow) {
    // A value is shown when what follows it has proved it: the first while the second is read.
    onShow = [this] { wanted = false; };
    EXPECT_EQ(Pass(), (Texts{"1 node 0"}));
    EXPECT_EQ(Pass(), Texts{});
    wanted = true;
    onShow = [this] { visible.erase(2); };
    EXPECT_EQ(Pass().at(2), "31 node 32") << "scrolled out before its turn";
    onShow = [this] { port.CutLine(); };
    EXPECT_EQ(Pass(), (Texts{"1 node 0"}));
    EXPECT_TRUE(link.LinkFailed());
    EXPECT_EQ(Pass(), Texts{});
    EXPECT_EQ(dialogs.shown.size(), 1U);
}

} // namespace
} // namespace vantrel
