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

/// The About window: the application's icon, name and version, its maker, and a link to the maker's
/// website. Texts and icon are set when the window is first shown and do not change afterwards.
///
/// Closing the window only hides it. Everything but `sharedController` is for the main thread only.
class AboutWindowController final : public WindowController {
    Q_OBJECT

  public:
    /// The program's one controller, for the application's own bundle. The first call creates it;
    /// it is never destroyed. The application object must exist. Thread-safe; the controller
    /// belongs to the main thread whichever thread asks first.
    static AboutWindowController& sharedController();

    /// `bundle` provides the application's name and version. It must outlive the controller.
    explicit AboutWindowController(const Bundle& bundle);

    /// Brings the window to the front and centres it.
    void showWindow() override;

    /// Opens the maker's website in the user's browser. A failure is ignored.
    void openWebsite();

    /// A label and its frame, in points from the content's lower left corner.
    struct FramedLabel {
        std::unique_ptr<Label> label;
        QRect frame;
    };

    /// A centred label without a parent, and its frame in a content area that is `width` wide. The
    /// lower edge of the frame is at `y`, its height is `h`, and the margin is 20 points on each
    /// side.
    static FramedLabel centeredLabel(const QString& text, const QFont& font, LabelColor color,
                                     int y, int h, int width);

  protected:
    std::unique_ptr<QWidget> loadWindow() override;
    void windowDidLoad() override { buildUI(); }

  private:
    void buildUI();

    const Bundle& _bundle;
    AuxiliaryWindow* _window = nullptr;  // null until it is loaded
};

}  // namespace ambulet
