#pragma once

#include "widgets/WindowController.h"

#include <QRect>

#include <memory>

class QFont;

namespace ambulet {

class AuxiliaryWindow;
class Bundle;
class Label;
enum class LabelColor;

/// The About window: the application's icon, name and version, who made it, and a link to the
/// maker's website. Its texts and its icon are those of its first showing.
///
/// A closed window is only hidden. Main thread only.
class AboutWindowController final : public WindowController {
    Q_OBJECT

  public:
    /// The program's one controller, on the application's own bundle. Made by the first call, once,
    /// whichever threads make it; never destroyed. The application object must exist.
    static AboutWindowController& sharedController();

    /// `bundle`: where the application's name and version come from; must outlive the controller.
    explicit AboutWindowController(const Bundle& bundle);

    /// Shows the window in front and centred, wherever it stood.
    void showWindow() override;

    /// Opens the maker's website in the user's browser. Whether that works is not known.
    void openWebsite();

    /// A label and its frame in points from the lower left.
    struct FramedLabel {
        std::unique_ptr<Label> label;
        QRect frame;
    };

    /// A centred label, not yet in any window, for a row of a content of width `width`: at height
    /// `y`, `h` high, 20 points from both sides.
    static FramedLabel centeredLabel(const QString& text, const QFont& font, LabelColor color,
                                     int y, int h, int width);

  protected:
    std::unique_ptr<QWidget> loadWindow() override;
    void windowDidLoad() override { buildUI(); }

  private:
    void buildUI();

    const Bundle& _bundle;
    AuxiliaryWindow* _window = nullptr;  // there once it is loaded
};

}  // namespace ambulet
