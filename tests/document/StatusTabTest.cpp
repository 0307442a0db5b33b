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
    Texts Pass() {
        shown.clear();
        Task pass = RefreshStatusTab(*this, nodes, words, link, turns);
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

    const SequenceAddresses nodes = NodeNumberAddressTable(); ///< The pass borrows them.
    const SequenceAddresses words = StatusWordAddressTable();
    std::set<int> visible{1, 2, 31};
    bool wanted = true;
    std::function<void()> onShow;
    Texts shown;
};

TEST_F(StatusTabTest, ReadsTheVisibleRowsInOrderAndEndsBetweenTheTwoValuesOfARow) {
    Open();
    EXPECT_EQ(Pass(), (Texts{"1 node 0", "1 00: Comm Disabled", "2 node 0", "2 00: Comm Disabled", "31 node 0",
                             "31 00: Comm Disabled"}));
    // A value is shown when what follows it has proved it: the first while the second is read.
    onShow = [this] { wanted = false; };
    EXPECT_EQ(Pass(), (Texts{"1 node 0"}));
    EXPECT_EQ(Pass(), Texts{});
    wanted = true;
    onShow = [this] { visible.erase(2); };
    EXPECT_EQ(Pass().at(2), "31 node 0") << "scrolled out before its turn";
}

} // namespace
} // namespace vantrel
