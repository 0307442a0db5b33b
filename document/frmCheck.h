// The check of the set-up: what its cells cannot tell one by one, and the V memory as a picture. Looks at the document
// and changes nothing; whoever owns it leads to the cells.
#pragma once

#include "document/Document.h"
#include "document/SetupCheck.h"
#include "widgets/QtBlockStrip.h"

#include <QDialog>
#include <QLabel>
#include <QScrollArea>
#include <QTimer>
#include <QTreeWidget>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace vantrel {

/// Not modal; deletes itself when it is closed. Follows the document while it is open.
class frmCheck final : public QDialog {
public:
    /// Leads to a value of the record, 0 being the status stack address; none: to the description of the sequence.
    using GoTo = std::function<void(std::size_t sequence, std::optional<std::size_t> index)>;

    /// The document must outlive the window.
    frmCheck(const Document& document, GoTo goTo, QWidget* parent);

    // Controls.
    QLabel* lblSummary = nullptr;
    QtBlockStrip* stpMemory = nullptr;
    QScrollArea* scrMemory = nullptr; ///< Around the picture.
    QTreeWidget* lstFindings = nullptr;
    QLabel* lblAdvice = nullptr; ///< The chosen line as a whole.
    QTimer tmrFollow;

private:
    void BuildControls();
    void Follow();
    void ShowFindings();
    void ShowMemory();
    /// Scrolls the picture to the block that the chosen finding is about.
    void ShowBlockOfFinding();

    const Document& document_;
    GoTo goTo_;
    Configuration shown_; ///< The record as it was when it was checked.
    std::vector<Finding> findings_;
    std::vector<std::size_t> blockIndices_; ///< Where each block of the strip begins, in the record's value arrays.
};

} // namespace vantrel
