#pragma once

#include <QAbstractFileIconProvider>
#include <QFileDialog>

#include <optional>

class QFileSystemModel;
class QWindow;

namespace ambulet {

/// Icons and types told from the name alone. Qt's own provider opens files without a known suffix.
class PlainIcons : public QAbstractFileIconProvider {
  public:
    PlainIcons();

    QIcon icon(const QFileInfo& info) const override;
    QIcon icon(IconType type) const override;
    QString type(const QFileInfo& info) const override;

  private:
    QIcon _folder;
    QIcon _file;
};

/// Asks for one XML file; nothing else can be chosen. Made for one showing. Main thread only.
///
/// It opens no file, changes none, and writes none: Qt's own history file is neither read nor
/// written. It has no Q_OBJECT: Qt shows the platform's dialog for QFileDialog's own class only.
class ExportFileDialog : public QFileDialog {
  public:
    /// `folder`: where it opens. `front`: the window that it stays in front of.
    ExportFileDialog(const QString& folder, QWindow* front);

    /// Returns once the user has chosen, with the file's path, or has cancelled, with none.
    std::optional<QString> ask();

    /// Separates the model, which is of Qt's own dialog, for `destroyInBackground`; null without
    /// one.
    QFileSystemModel* takeModel();

    /// A file that is not named as XML leaves the dialog open.
    void accept() override;

  private:
    void arrangeWidgets();
    std::optional<QString> chosen() const;
};

/// The folder to open the dialog in: that of the file at `path`; where it is gone or does not
/// answer within 300 milliseconds, the Downloads folder, else the home folder.
QString startFolder(const std::optional<QString>& path);

/// Shows the dialog, which opens in `startFolder(path)`. Returns what `ask` does. The dialog's
/// memory goes back to the system soon afterwards.
std::optional<QString> askForExportFile(const std::optional<QString>& path, QWindow* front);

}  // namespace ambulet
