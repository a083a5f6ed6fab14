#pragma once

#include <QFileDialog>

#include <optional>

class QWindow;

namespace ambulet {

/// Asks for one XML file; nothing else can be chosen in it. Main thread only.
///
/// Never to be destroyed, since its destructor writes the toolkit's own history file, and the
/// program writes nothing but its settings. So it has no parent either.
class ExportFileDialog : public QFileDialog {
  public:
    /// `folder`: where it opens at first. `front`: the window that it stays in front of.
    ExportFileDialog(const QString& folder, QWindow* front);

    /// Returns once the user has chosen, with the file's path, or has cancelled, with none.
    std::optional<QString> ask();

    /// A file that is not named as XML leaves the dialog open.
    void accept() override;

  private:
    std::optional<QString> chosen() const;
};

}  // namespace ambulet
