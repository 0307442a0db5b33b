// The main frame's recent files: the entries in the File menu above Exit.
#include "app/frmMDIMain.h"
#include "text/PathText.h"

#include <QSettings>

#include <system_error>

namespace vantrel {

namespace {

constexpr const char* RecentKey = "Files/Recent";

} // namespace

RecentFiles frmMDIMain::RememberedFiles() const {
    std::vector<std::string> files;
    for (const QString& file : Settings()->value(QLatin1String(RecentKey)).toStringList())
        files.push_back(file.toStdString());
    return RecentFiles(files);
}

void frmMDIMain::NoteRecent() {
    const std::filesystem::path& file = program_.document.OwnFile;
    if (file.empty() || file == recentNoted_) return;
    recentNoted_ = file;
    // Read anew: another program may have noted its own meanwhile.
    RecentFiles recent = RememberedFiles();
    if (!recent.Note(file)) return;
    QStringList files;
    for (const std::filesystem::path& one : recent.List())
        files.append(QString::fromStdString(Utf8FromPath(one)));
    Settings()->setValue(QLatin1String(RecentKey), files);
}

void frmMDIMain::ShowRecent() {
    qDeleteAll(recentEntries_);
    recentEntries_.clear();
    const RecentFiles recent = RememberedFiles();
    for (std::size_t i = 0; i < recent.List().size(); ++i) {
        const std::filesystem::path& file = recent.List()[i];
        auto* entry = new QAction(QString::fromStdString(RecentCaption(i, file)), this);
        entry->setObjectName(QStringLiteral("mnuFileRecent%1").arg(i + 1));
        entry->setMenuRole(QAction::NoRole);
        std::error_code error;
        entry->setEnabled(mnuFileOpen->isEnabled() && std::filesystem::is_regular_file(file, error));
        // Queued: the entries are made anew whenever the menu opens.
        connect(
            entry, &QAction::triggered, this, [this, file] { OpenFile(file); }, Qt::QueuedConnection);
        mnuFile->insertAction(mnuFileExit, entry);
        recentEntries_.append(entry);
    }
    if (!recentEntries_.isEmpty()) recentEntries_.append(mnuFile->insertSeparator(mnuFileExit));
}

} // namespace vantrel
