#include "mainwindow/ExportFileDialog.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFileInfo>
#include <QLineEdit>
#include <QWindow>

namespace ambulet {

namespace {

QLineEdit* nameField(const QFileDialog& dialog) {
    return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

/// Takes the completion away from the name field of a closed dialog, and gives it back when the
/// next one opens: a folder read late would open its list over the main window.
class ClosedCompletion {
  public:
    explicit ClosedCompletion(QFileDialog& dialog) : _name(nameField(dialog)) {
        if (_name != nullptr) {
            _completer = dialog.findChild<QCompleter*>();
            _name->setCompleter(_completer);
        }
    }
    ~ClosedCompletion() {
        if (_name != nullptr && _completer != nullptr) {
            _completer->popup()->hide();
            _name->setCompleter(nullptr);
        }
    }
    ClosedCompletion(const ClosedCompletion&) = delete;
    ClosedCompletion& operator=(const ClosedCompletion&) = delete;

  private:
    QLineEdit* _name;
    QCompleter* _completer = nullptr;
};

bool isNamedAsXML(const QString& path) {
    return path.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive);
}

}  // namespace

ExportFileDialog::ExportFileDialog(const QString& folder, QWindow* front) {
    setWindowTitle(QStringLiteral("Select a HealthKit XML export file"));
    setFileMode(ExistingFile);
    setNameFilter(QStringLiteral("XML files (*.xml)"));
    setLabelText(Accept, QStringLiteral("Open"));
    setWindowModality(Qt::ApplicationModal);
    setDirectory(folder);
    winId();
    windowHandle()->setTransientParent(front);
}

std::optional<QString> ExportFileDialog::ask() {
    const ClosedCompletion completion(*this);
    while (exec() == Accepted) {
        std::optional<QString> path = chosen();
        if (!path || isNamedAsXML(*path)) {
            return path;
        }
        // The platform's own dialog has closed already, so it opens again.
    }
    return std::nullopt;
}

// The name filter only leaves other files out of the list; a name can be typed all the same.
void ExportFileDialog::accept() {
    QLineEdit* const name = nameField(*this);
    const std::optional<QString> path = chosen();
    if (name != nullptr && path && QFileInfo::exists(*path) && !QFileInfo(*path).isDir() &&
        !isNamedAsXML(*path)) {
        name->selectAll();
        return;
    }
    QFileDialog::accept();
}

std::optional<QString> ExportFileDialog::chosen() const {
    const QStringList files = selectedFiles();
    return files.isEmpty() ? std::nullopt : std::optional(files.constFirst());
}

}  // namespace ambulet
