#include "mainwindow/ExportFileDialog.h"

#include "platform/FileURL.h"

#include <QApplication>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QFontMetrics>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStandardPaths>
#include <QStyle>
#include <QTreeView>
#include <QUrl>
#include <QWindow>

#include <chrono>
#include <filesystem>
#include <future>
#include <memory>
#include <system_error>
#include <thread>

#ifdef Q_OS_LINUX
#include <malloc.h>
#endif

namespace ambulet {

namespace {

using namespace std::chrono_literals;

// Both cases, because platforms' dialogs may be case-sensitive.
QString nameFilter() {
    return QStringLiteral("XML files (*.xml *.XML)");
}

// Moves Qt's history file to a folder that cannot exist. QFileDialog's constructor reads the file,
// and its destructor writes it.
void keepFromQtsHistory() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

// Asks on another thread, because the folder may be on a mount that hangs.
bool isFolderThatAnswers(const QString& path) {
    auto answer = std::make_shared<std::promise<bool>>();
    std::future<bool> future = answer->get_future();
    try {
        std::thread([path, answer] { answer->set_value(QFileInfo(path).isDir()); }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    return future.wait_for(300ms) == std::future_status::ready && future.get();
}

bool isNamedAsXML(const QString& path) {
    return path.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive);
}

bool isRegularFileWithNonUtf8Name(const QString& path) {
    const FileURL file(path);
    std::error_code error;
    return file.path != QFile::encodeName(path).toStdString() &&
           std::filesystem::is_regular_file(file.path, error);
}

// The model's destructor waits for the model's thread, which may wait for a mount that hangs.
void destroyInBackground(QFileSystemModel* model) {
    if (model == nullptr) {
        return;
    }
    model->moveToThread(nullptr);  // the model gets no more events
    try {
        std::thread([model] {
            delete model;
#ifdef Q_OS_LINUX
            malloc_trim(0);  // otherwise malloc keeps the model's memory
#endif
        }).detach();
    } catch (const std::system_error&) {
        // Deliberate: if no thread can be started, the model leaks.
    }
}

// QFileDialog selects what the user types in its list. While the field does not have the focus,
// QFileDialog also keeps the folders that were typed on the way selected, and replaces the typed
// path by the name of the selected file. Keys may arrive then: on X11, the dialog may be inactive
// for a moment after the list of suggestions has closed.
void keepTypedPath(QLineEdit* name, QItemSelectionModel* selection) {
    // Sent before textChanged, which selects the file.
    QObject::connect(name, &QLineEdit::textEdited, selection, &QItemSelectionModel::clearSelection);
    // Called after QFileDialog's own slot, which may have replaced the text.
    QObject::connect(name, &QLineEdit::textChanged, name, [name](const QString& text) {
        if (name->text() != text) {
            name->setText(text);
        }
    });
}

QList<QUrl> usualFolders() {
    QList<QUrl> urls;
    for (const auto place : {QStandardPaths::DownloadLocation, QStandardPaths::DocumentsLocation,
                             QStandardPaths::DesktopLocation, QStandardPaths::HomeLocation}) {
        const QString folder = QStandardPaths::writableLocation(place);
        if (isFolderThatAnswers(folder)) {
            urls.append(QUrl::fromLocalFile(folder));  // the dialog leaves out duplicates
        }
    }
    return urls;
}

}  // namespace

PlainIcons::PlainIcons()
    : _folder(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
      _file(QApplication::style()->standardIcon(QStyle::SP_FileIcon)) {}

QIcon PlainIcons::icon(const QFileInfo& info) const {
    return info.isDir() ? _folder : _file;
}

QIcon PlainIcons::icon(IconType type) const {
    return type == File ? _file : _folder;
}

QString PlainIcons::type(const QFileInfo& info) const {
    if (info.isDir()) {
        return QStringLiteral("Folder");
    }
    return isNamedAsXML(info.fileName()) ? QStringLiteral("XML") : QStringLiteral("File");
}

ExportFileDialog::ExportFileDialog(const QString& folder, QWindow* parent)
    : QFileDialog((keepFromQtsHistory(), nullptr)) {
    setWindowTitle(QStringLiteral("Select a HealthKit XML export file"));
    setOptions(ReadOnly | DontUseCustomDirectoryIcons);
    setFileMode(ExistingFile);
    setLabelText(Accept, QStringLiteral("Open"));
    setWindowModality(Qt::ApplicationModal);
    // Never destroyed, because the model's thread uses it.
    static auto* const icons = new PlainIcons;
    setIconProvider(icons);
    setNameFilter(nameFilter());
    arrangeWidgets();
    setDirectory(folder);
    winId();
    windowHandle()->setTransientParent(parent);
}

// Arranges the widgets of Qt's own dialog. The platform's dialog has none of them.
void ExportFileDialog::arrangeWidgets() {
    if (auto* const model = findChild<QFileSystemModel*>()) {
        model->setOption(QFileSystemModel::DontWatchForChanges);
    }
    auto* const list = findChild<QTreeView*>(QStringLiteral("treeView"));
    if (list == nullptr) {
        return;
    }
    if (auto* const name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
        keepTypedPath(name, list->selectionModel());
    }
    setSidebarUrls(usualFolders());
    const int letter = QFontMetrics(list->font()).averageCharWidth();
    const int letters[] = {44, 12, 10, 27};  // name, size, type, date
    int width = 0;
    for (int column = 0; column < 4; ++column) {
        list->header()->resizeSection(column, letters[column] * letter);
        width += letters[column] * letter;
    }
    const int side = 20 * letter;
    if (auto* const splitter = findChild<QSplitter*>(QStringLiteral("splitter"))) {
        splitter->setSizes({side, width});
    }
    const int sideAndMargins = side + 10 * letter;
    const QSize available = screen()->availableSize();
    resize(QSize(width + sideAndMargins, 40 * QFontMetrics(list->font()).height() * 3 / 4)
               .boundedTo(available * 9 / 10));
}

std::optional<QString> ExportFileDialog::ask() {
    while (exec() == Accepted) {
        std::optional<QString> path = chosen();
        if (!path || isNamedAsXML(*path)) {
            return path;
        }
        // The file's name does not end in ".xml". The platform's dialog has closed, and is opened
        // again. Qt's own dialog stays open in this case; see accept().
        setNameFilter(nameFilter());
        setDirectory(QFileInfo(*path).path());
    }
    return std::nullopt;
}

// The name filter only hides other files. The user can still type their names.
void ExportFileDialog::accept() {
    auto* const name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const std::optional<QString> path = chosen();
    if (name != nullptr && path && QFileInfo::exists(*path) && !QFileInfo(*path).isDir() &&
        !isNamedAsXML(*path)) {
        name->selectAll();
        return;
    }
    // QFileDialog does not find files whose names are not UTF-8.
    if (path && isNamedAsXML(*path) && isRegularFileWithNonUtf8Name(*path)) {
        done(Accepted);
        return;
    }
    QFileDialog::accept();
}

QFileSystemModel* ExportFileDialog::takeModel() {
    auto* const model = findChild<QFileSystemModel*>();
    if (model != nullptr) {
        model->setParent(nullptr);
    }
    return model;
}

std::optional<QString> ExportFileDialog::chosen() const {
    const QStringList files = selectedFiles();
    return files.isEmpty() ? std::nullopt : std::optional(files.constFirst());
}

QString startFolder(const std::optional<QString>& path) {
    if (path && !path->isEmpty()) {
        if (QString folder = QFileInfo(*path).path(); isFolderThatAnswers(folder)) {
            return folder;
        }
    }
    const QString downloads = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    return isFolderThatAnswers(downloads) ? downloads : QDir::homePath();
}

std::optional<QString> askForExportFile(const std::optional<QString>& path, QWindow* parent) {
    QFileSystemModel* model = nullptr;
    std::optional<QString> chosen;
    {
        ExportFileDialog dialog(startFolder(path), parent);
        chosen = dialog.ask();
        model = dialog.takeModel();
    }
    destroyInBackground(model);
    return chosen;
}

}  // namespace ambulet
