#pragma once

#include <QAbstractFileIconProvider>
#include <QFileDialog>

#include <optional>

class QFileSystemModel;
class QWindow;

namespace ambulet {

/// Chooses icons and types by file names only. Qt's own provider opens files with unknown suffixes.
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

/// Asks the user for one XML file. Nothing else can be chosen. Use it once. Main thread only.
///
/// It neither opens nor changes any file. Qt's own history file is neither read nor written. The
/// class has no Q_OBJECT, because Qt shows the platform's dialog only if the meta-object is
/// QFileDialog's.
class ExportFileDialog : public QFileDialog {
  public:
    /// `folder`: the folder it shows first. `front`: the window that it stays in front of.
    ExportFileDialog(const QString& folder, QWindow* front);

    /// Shows the dialog. Returns the path that the user has chosen; empty if the user cancels.
    std::optional<QString> ask();

    /// Detaches the file system model from the dialog, so that destroying the dialog does not
    /// destroy the model. Null if the platform's dialog is used, which has no model.
    QFileSystemModel* takeModel();

    /// Keeps the dialog open if the name of the chosen file does not end in ".xml".
    void accept() override;

  private:
    void arrangeWidgets();
    std::optional<QString> chosen() const;
};

/// The folder that the dialog shows first: the first of these that is a folder and answers within
/// 300 milliseconds.
/// 1. the folder of the file at `path`
/// 2. the Downloads folder
/// 3. the home folder, which is not checked
QString startFolder(const std::optional<QString>& path);

/// Shows a dialog that opens in `startFolder(path)`, and returns the chosen path; empty if the user
/// cancels. The dialog's file system model is destroyed in the background, because that may wait
/// for a mount that hangs.
std::optional<QString> askForExportFile(const std::optional<QString>& path, QWindow* front);

}  // namespace ambulet
