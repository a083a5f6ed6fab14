#pragma once

#include <QAbstractFileIconProvider>
#include <QFileDialog>

#include <optional>

class QFileSystemModel;
class QWindow;

namespace ambulet {

/// The icons and type names of folders, XML files and other files. Opens no file; Qt's own provider
/// opens files with unknown suffixes.
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

/// Asks the user for one file whose name ends in ".xml", in upper or lower case. Neither opens nor
/// changes any file, not even Qt's own history file. Main thread only.
///
/// The class has no Q_OBJECT, because Qt shows the platform's dialog only if the meta-object is
/// QFileDialog's.
class ExportFileDialog : public QFileDialog {
  public:
    /// `folder`: the folder that the dialog shows first. `parent`: the window in front of which it
    /// stays.
    ExportFileDialog(const QString& folder, QWindow* parent);

    /// Shows the dialog. Returns the path that the user has chosen; empty if the user cancels.
    /// Called once.
    std::optional<QString> ask();

    /// Takes the file system model from the dialog. The caller owns the model. Null if the
    /// platform's dialog is used, which has no model.
    QFileSystemModel* takeModel();

    /// Accepts the chosen file. Keeps the dialog open if the file's name does not end in ".xml".
    void accept() override;

  private:
    void arrangeWidgets();
    std::optional<QString> chosen() const;
};

/// The folder that the dialog shows first. It is the first of these that is a folder and answers
/// within 300 milliseconds:
/// 1. the folder of the file at `path`
/// 2. the Downloads folder
/// 3. the home folder, which is not checked
QString startFolder(const std::optional<QString>& path);

/// Shows a dialog that opens in `startFolder(path)` and stays in front of `parent`. Returns the
/// chosen path; empty if the user cancels. The dialog's file system model is destroyed in the
/// background, because its destructor may wait for a mount that hangs.
std::optional<QString> askForExportFile(const std::optional<QString>& path, QWindow* parent);

}  // namespace ambulet
