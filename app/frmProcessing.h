// The progress window: hosts one transfer between the record and the board, shows how far it is, and lets the user
// cancel it. Knows no other window.
#pragma once

#include "document/SettingsTransfer.h"
#include "widgets/QtTaskDialog.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vantrel {

class frmProcessing final : public QtTaskDialog, private TransferDisplay {
public:
    /// How the transfer ended; one of the first three is true.
    struct Result {
        bool complete = false; ///< Every value was walked (a mode without work: at once), and the link stands.
        bool cancelled = false; ///< By the user, before the last value; or a silent board was given up.
        bool failed = false; ///< The link has failed, or an unexpected error or the program's end stopped it.
        /// The board has not confirmed that the flag of a download ("B105") is 0 again.
        bool flagLeft = false;
        bool reconnected = false; ///< The port was opened again in the middle.
        std::vector<std::size_t> unconfirmed{}; ///< Indices of walked values that cannot be relied on.
        std::vector<RepeatedWrite> repeated{}; ///< Writes that were sent twice.
        std::vector<std::uint16_t> alsoReached{}; ///< Bytes that the rest may have set to 255.
    };

    /// `record`, `link`, `dialogs` and `turns` must outlive the window.
    frmProcessing(TransferMode mode, Configuration& record, RSComm& link, Dialogs& dialogs, TurnQueue& turns,
                  QWidget* parent);

    /// Shows the window, runs the transfer and returns when both are over. Once.
    Result RunModal();

    // Controls, by their names.
    QLabel* lblProcessing = nullptr;
    QProgressBar* prgProcessing = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    void BuildControls();
    void LayOutControls();
    void CloseAsked() override;
    void ShowLabel(std::string_view label) override;
    void ShowProgress(std::size_t done, std::size_t total) override;

    RSComm& link_;
    TransferMode mode_;
    SettingsTransfer transfer_;
};

} // namespace vantrel
