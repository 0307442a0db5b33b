// What the main frame remembers from one run to the next: its place on the screen, and the folder last worked in.
#include "app/frmMDIMain.h"

#include "text/PathText.h"

#include <QSettings>
#include <QStandardPaths>

namespace vantrel {

namespace {

constexpr const char* PlaceKey = "Window/Place";
constexpr const char* FolderKey = "Files/LastFolder";
constexpr const char* BackUpKey = "Tools/BackUpBeforeDownload";
constexpr const char* NotationKey = "Views/WordFormat";

} // namespace

std::unique_ptr<QSettings> frmMDIMain::Settings() const {
    const std::string file = Utf8FromPath(program_.folder.WritableSupportFile("vantrel.ini"));
    return std::make_unique<QSettings>(QString::fromStdString(file), QSettings::IniFormat);
}

std::filesystem::path frmMDIMain::DocumentsFolder() {
    return PathFromUtf8(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString());
}

void frmMDIMain::RestorePlace() {
    const auto settings = Settings();
    // Qt brings a window back whose screen has gone.
    if (!restoreGeometry(settings->value(QLatin1String(PlaceKey)).toByteArray())) FitToChild();
    std::filesystem::path last = PathFromUtf8(settings->value(QLatin1String(FolderKey)).toString().toStdString());
    std::error_code error;
    if (!std::filesystem::is_directory(last, error)) last.clear();
    dialogs_.SetLastFolder(last);
    mnuToolsBackUp->setChecked(settings->value(QLatin1String(BackUpKey)).toBool());
    dialogs_.SetSamplesFolder(program_.folder.Entry("samples"));
}

void frmMDIMain::ToolsBackUp() {
    // At once: a program that is killed must not forget it.
    Settings()->setValue(QLatin1String(BackUpKey), mnuToolsBackUp->isChecked());
}

WordNotation frmMDIMain::RememberedNotation() const {
    return WordNotationNamed(Settings()->value(QLatin1String(NotationKey)).toString().toStdString());
}

void frmMDIMain::RememberNotation(WordNotation notation) {
    Settings()->setValue(QLatin1String(NotationKey), QString::fromStdString(std::string(WordNotationName(notation))));
}

void frmMDIMain::SavePlace() {
    const auto settings = Settings();
    settings->setValue(QLatin1String(PlaceKey), saveGeometry());
    settings->setValue(QLatin1String(FolderKey), QString::fromStdString(Utf8FromPath(dialogs_.LastFolder())));
}

} // namespace vantrel
