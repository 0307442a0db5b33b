// The safety copies as a list, of which one can be chosen to be opened. Shows only; whoever owns it opens the copy.
#pragma once

#include "document/Backups.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include <filesystem>
#include <optional>

namespace vantrel {

/// Modal, by exec(): Accepted when the user wants to open Chosen().
class frmBackups final : public QDialog {
public:
    /// `here`: the record that the copies are compared with. `folder`: where they are.
    frmBackups(Backups::List list, const std::filesystem::path& folder, const Configuration& here, QWidget* parent);

    [[nodiscard]] std::optional<Backup> Chosen() const;

    // Controls.
    QLabel* lblFolder = nullptr;
    QTreeWidget* lstBackups = nullptr;
    QLabel* lblSkipped = nullptr;
    QPushButton* cmdOpen = nullptr;

private:
    void BuildControls(const std::filesystem::path& folder);
    void Fill(const Configuration& here);
    void ShowSkipped();

    Backups::List list_;
};

} // namespace vantrel
