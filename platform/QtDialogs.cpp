#include "platform/QtDialogs.h"

#include "platform/Folders.h"
#include "platform/QtScreen.h"
#include "platform/QtText.h"
#include "text/PathText.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>

#include <optional>
#include <system_error>

namespace vantrel {

namespace {

/// Width of a prompt, in characters, at which its lines break.
constexpr int PromptColumns = 76;

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::Ok:
        return QMessageBox::Ok;
    case MessageButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessageButtons::RetryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

/// Closing a box without a choice is the answer that does least.
MessageAnswer AnswerOf(int button, MessageButtons buttons) {
    switch (button) {
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Retry:
        return MessageAnswer::Retry;
    case QMessageBox::Ok:
        return MessageAnswer::Ok;
    default:
        return buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Cancel;
    }
}

/// A short text would make a box too narrow for a long title.
void ShowWholeTitle(QMessageBox& window) {
    constexpr int roomForFrame = 120;
    const QLabel* label = window.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    auto* grid = qobject_cast<QGridLayout*>(window.layout());
    if (!label || !grid) return;
    const int width = label->fontMetrics().horizontalAdvance(window.windowTitle()) * 5 / 4 + roomForFrame;
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

QMessageBox::StandardButton DefaultOf(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::Ok:
        return QMessageBox::Ok;
    case MessageButtons::RetryCancel:
        return QMessageBox::Retry;
    default:
        return QMessageBox::Yes;
    }
}

/// The host's texts have none on every host.
void GiveAccessKeys(const QList<QAbstractButton*>& buttons) {
    for (QAbstractButton* button : buttons) {
        const QString text = button->text();
        if (!text.contains(QLatin1Char('&'))) button->setText(QLatin1Char('&') + text);
    }
}

/// Keeps keys and clicks that were meant for something else from a box that comes up under the user's hands. A key that
/// is held down never counts.
class QuietAtFirst final : public QObject {
public:
    QuietAtFirst(QWidget& box, std::chrono::milliseconds quiet) : box_(box), quiet_(quiet) {
        QCoreApplication::instance()->installEventFilter(this);
        since_.start();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Show:
            if (watched == &box_) since_.start();
            return false;
        case QEvent::KeyPress:
        case QEvent::ShortcutOverride:
            return OfBox(watched) && (static_cast<QKeyEvent*>(event)->isAutoRepeat() || TooEarly());
        case QEvent::Shortcut:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return TooEarly() && OfBox(watched);
        case QEvent::Close:
            if (!TooEarly() || !OfBox(watched)) return false;
            event->ignore();
            return true;
        default:
            return false;
        }
    }

private:
    [[nodiscard]] bool TooEarly() const { return since_.elapsed() < quiet_.count(); }
    [[nodiscard]] bool OfBox(const QObject* watched) const {
        const auto* widget = qobject_cast<const QWidget*>(watched);
        const QObject* window = box_.windowHandle();
        return widget ? widget->window() == &box_ : watched == window;
    }

    QWidget& box_;
    std::chrono::milliseconds quiet_;
    QElapsedTimer since_;
};

/// A question whose initial name is a pattern ("*.sdt") names none.
bool NamesFile(const FileQuestion& question) {
    const std::string name = Utf8FromPath(question.initial.filename());
    return !name.empty() && name.find('*') == std::string::npos;
}

/// The toolkit's own dialog would delete a whole folder at a key press, and rename or move at a slip of the mouse.
void KeepFromChangingFolders(QFileDialog& window) { window.setOption(QFileDialog::ReadOnly); }

/// The one change that saving needs. The toolkit's own button for it goes with the others.
void LetMakeFolders(QFileDialog& window) {
    auto* buttons = window.findChild<QDialogButtonBox*>();
    if (!buttons) return;
    if (auto* tool = window.findChild<QToolButton*>(QStringLiteral("newFolderButton"))) tool->hide();
    auto* button = buttons->addButton(QObject::tr("New &Folder..."), QDialogButtonBox::ActionRole);
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, &window, [&window] {
        const QString title = QObject::tr("New Folder");
        const QString name = QInputDialog::getText(&window, title, QObject::tr("Name of the new folder:")).trimmed();
        if (name.isEmpty()) return;
        const QDir folder = window.directory();
        if (folder.exists(name) || folder.mkpath(name)) {
            window.setDirectory(folder.filePath(name));
        } else {
            QMessageBox::warning(&window, title,
                                 QObject::tr("The folder \"%1\" cannot be made here.").arg(folder.filePath(name)));
        }
    });
}

} // namespace

/// Counts a box as open for as long as it lives.
class QtDialogs::Up {
public:
    explicit Up(QtDialogs& dialogs) : dialogs_(dialogs) { ++dialogs_.open_; }
    Up(const Up&) = delete;
    Up& operator=(const Up&) = delete;
    ~Up() {
        if (--dialogs_.open_ == 0 && dialogs_.onClosed_) dialogs_.onClosed_();
    }

private:
    QtDialogs& dialogs_;
};

MessageAnswer QtDialogs::Show(const MessageBox& box) {
    if (silent_) return AnswerOf(QMessageBox::NoButton, box.buttons);
    const Up up(*this);
    QMessageBox window(IconOf(box.icon), Text(box.title), Text(box.text), ButtonsOf(box.buttons), owner_);
    // A "<" in a file's name is a "<".
    window.setTextFormat(Qt::PlainText);
    ShowWholeTitle(window);
    GiveAccessKeys(window.buttons());
    // The first one, whatever the desktop's habits: what Enter does must not depend on where the program runs.
    window.setDefaultButton(box.destroys ? QMessageBox::No : DefaultOf(box.buttons));
    std::optional<QuietAtFirst> quiet;
    if (box.unasked && quietTime_.count() > 0) quiet.emplace(window, quietTime_);
    return AnswerOf(window.exec(), box.buttons);
}

std::optional<std::string> QtDialogs::AskText(const std::string& title, const std::string& prompt,
                                              const std::string& initial, const std::string& note) {
    if (silent_) return std::nullopt;
    const Up up(*this);
    QDialog window(owner_);
    window.setWindowTitle(Text(title));
    QLabel label(Text(prompt));
    QLineEdit entry(Text(initial));
    QLabel below(Text(note));
    QDialogButtonBox buttons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    label.setTextFormat(Qt::PlainText);
    label.setWordWrap(true);
    label.setMinimumWidth(label.fontMetrics().averageCharWidth() * PromptColumns);
    below.setTextFormat(Qt::PlainText);
    below.setWordWrap(true);
    entry.setAccessibleName(Text(title));
    entry.setAccessibleDescription(Text(note));
    SelectAllOnFocus(entry);
    QVBoxLayout layout(&window);
    layout.setSizeConstraint(QLayout::SetFixedSize);
    layout.addWidget(&label);
    layout.addWidget(&entry);
    layout.addWidget(&below);
    layout.addWidget(&buttons);
    QObject::connect(&buttons, &QDialogButtonBox::accepted, &window, &QDialog::accept);
    QObject::connect(&buttons, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    window.setObjectName(QStringLiteral("AskText"));
    GiveAccessKeys(buttons.buttons());
    CentreOnScreen(window);
    if (window.exec() != QDialog::Accepted) return std::nullopt;
    return entry.text().toStdString();
}

std::optional<std::size_t> QtDialogs::Choose(const std::string& title, const std::string& prompt,
                                             const std::vector<std::string>& texts) {
    if (silent_) return std::nullopt;
    const Up up(*this);
    QStringList items;
    for (const std::string& text : texts)
        items << Text(text);
    QInputDialog window(owner_);
    window.setWindowTitle(Text(title));
    window.setLabelText(Text(prompt));
    window.setComboBoxItems(items);
    window.setOption(QInputDialog::UseListViewForComboBoxItems);
    window.setTextValue(items.value(0));
    if (window.exec() != QDialog::Accepted) return std::nullopt;
    return static_cast<std::size_t>(std::max<qsizetype>(items.indexOf(window.textValue()), 0));
}

std::optional<FileChoice> QtDialogs::OpenFile(const FileQuestion& question) { return AskFile(question, false); }

std::optional<FileChoice> QtDialogs::SaveFile(const FileQuestion& question) { return AskFile(question, true); }

std::filesystem::path QtDialogs::StartFolder(const FileQuestion& question, bool saving) const {
    if (NamesFile(question) && question.initial.has_parent_path()) return question.initial.parent_path();
    // Not where the program happens to have been started, nor where its samples are kept from everybody.
    if (saving && (lastFolder_.empty() || !FolderIsWritable(lastFolder_))) {
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        return PathFromUtf8((QDir(documents).exists() ? documents : QDir::homePath()).toStdString());
    }
    if (!lastFolder_.empty()) return lastFolder_;
    std::error_code error;
    return std::filesystem::is_directory(samples_, error) ? samples_ : question.initial.parent_path();
}

int QtDialogs::RunWithSamples(QFileDialog& window) const {
    const QList<QUrl> places = window.sidebarUrls();
    const QUrl samples = QUrl::fromLocalFile(Text(Utf8FromPath(samples_)));
    std::error_code error;
    if (std::filesystem::is_directory(samples_, error) && !places.contains(samples))
        window.setSidebarUrls(places + QList<QUrl>{samples});
    const int result = window.exec();
    // The toolkit would remember it for every program of this user.
    window.setSidebarUrls(places);
    return result;
}

std::optional<FileChoice> QtDialogs::AskFile(const FileQuestion& question, bool saving) {
    if (silent_) return std::nullopt;
    const Up up(*this);
    if (picker_) return picker_(question, saving);
    QFileDialog window(owner_, saving ? QObject::tr("Save As") : QObject::tr("Open"));
    if (!question.title.empty()) window.setWindowTitle(Text(question.title));
    window.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    window.setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    QStringList filters;
    for (const FileFilter& filter : question.filters)
        filters << Text(filter.name);
    window.setNameFilters(filters);
    window.selectNameFilter(filters.value(static_cast<qsizetype>(question.filter)));
    KeepFromChangingFolders(window);
    if (saving) LetMakeFolders(window);
    const std::filesystem::path folder = StartFolder(question, saving);
    if (!folder.empty()) window.setDirectory(Text(Utf8FromPath(folder)));
    if (NamesFile(question)) window.selectFile(Text(Utf8FromPath(question.initial.filename())));
    if (RunWithSamples(window) != QDialog::Accepted) return std::nullopt;
    const qsizetype chosen = filters.indexOf(window.selectedNameFilter());
    const std::filesystem::path path = PathFromUtf8(window.selectedFiles().value(0).toStdString());
    lastFolder_ = path.parent_path();
    return FileChoice{path, static_cast<std::size_t>(std::max<qsizetype>(chosen, 0))};
}

} // namespace vantrel
