// What the main frame remembers from one run to the next: its place on the screen, and the folder last worked in.
#include "app/frmMDIMain.h"

#include "text/PathText.h"

#include <QSettings>
#include <QStandardPaths>

namespace vantrel {

namespace {

constexpr const char* PlaceKey = "Window/Place";
constexpr const char* FolderKey = "Files/LastFolder";

QSettings SettingsOf(const ProgramFolder& folder) {
    const std::string file = Utf8FromPath(folder.WritableSupportFile("vantrel.ini"));
    return {QString::fromStdString(file), QSettings::IniFormat};
}

} // namespace

std::filesystem::path frmMDIMain::DocumentsFolder() {
    return PathFromUtf8(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString());
}

void frmMDIMain::RestorePlace() {
    const QSettings settings = SettingsOf(program_.folder);
    // Qt brings a window back whose screen has gone.
    if (!restoreGeometry(settings.value(QLatin1String(PlaceKey)).toByteArray())) FitToChild();
    std::filesystem::path last = PathFromUtf8(settings.value(QLatin1String(FolderKey)).toString().toStdString());
    std::error_code error;
    if (!std::filesystem::is_directory(last, error)) last.clear();
    dialogs_.SetLastFolder(last);
    dialogs_.SetSamplesFolder(program_.folder.Entry("samples"));
}

void frmMDIMain::SavePlace() {
    QSettings settings = SettingsOf(program_.folder);
    settings.setValue(QLatin1String(PlaceKey), saveGeometry());
    settings.setValue(QLatin1String(FolderKey), QString::fromStdString(Utf8FromPath(dialogs_.LastFolder())));
}

} // namespace vantrel
