// The progress window: hosts one transfer between the record and the board, shows how far it is, and lets the user
// cancel it. Knows no other window.
#pragma once

#include "app/frmProgress.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vantrel {

class frmProcessing final : public frmProgress {
public:
    /// How the transfer ended; one of the first three is true.
    struct Result {
        bool complete = false; ///< Every value was walked (a mode without work: at once), and the link stands.
        bool cancelled = false; ///< By the user, before the last value; or a silent board was given up.
        bool failed = false; ///< The link has failed, or an unexpected error or the program's end stopped it.
        /// The board has not confirmed that the flag of a download ("B105") is 0 again.
        bool flagLeft = false;
        bool reconnected = false; ///< The port was opened again in the middle.
        std::vector<std::size_t> walked{}; ///< Indices of the values that were transferred, ascending.
        std::vector<std::size_t> unconfirmed{}; ///< Indices of walked values that cannot be relied on.
        std::vector<RepeatedWrite> repeated{}; ///< Writes that were sent twice.
        std::vector<std::uint16_t> alsoReached{}; ///< Bytes that the rest may have set to 255.
        /// Whose values they are; nothing when it is not known, and for a part of the values.
        std::optional<BoardIdentity> board{};
    };

    /// `record`, `link`, `dialogs` and `turns` must outlive the window. `indices`: see SettingsTransfer::Only.
    frmProcessing(TransferMode mode, Configuration& record, RSComm& link, Dialogs& dialogs, TurnQueue& turns,
                  QWidget* parent, std::vector<std::size_t> indices = EveryIndex());

    /// Shows the window, runs the transfer and returns when both are over. Once.
    Result RunModal();

private:
    Task Run();
    void CloseAsked() override;

    RSComm& link_;
    TurnQueue& turns_;
    TransferMode mode_;
    bool whole_;
    std::optional<BoardIdentity> board_;
    SettingsTransfer transfer_;
};

} // namespace vantrel
