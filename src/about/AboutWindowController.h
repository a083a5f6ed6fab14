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

/// The About window: the application's icon, name, version, makers, website and copyright. They are
/// set when the window is loaded and do not change afterwards.
///
/// Closing the window only hides it. Everything but `sharedController` is for the main thread only.
class AboutWindowController final : public WindowController {
    Q_OBJECT

  public:
    /// The program's one controller, for the application's own bundle. The first call creates it;
    /// it is never destroyed. The application object must exist. Thread-safe; the controller
    /// belongs to the main thread whichever thread makes the first call.
    static AboutWindowController& sharedController();

    /// `bundle` provides the application's name and version. It must outlive the controller.
    explicit AboutWindowController(const Bundle& bundle);

    /// Brings the window to the front and centres it.
    void showWindow() override;

    /// Opens the website in the user's browser. A failure is ignored.
    void openWebsite();

    /// A label and its frame, in points from the content's lower left corner.
    struct FramedLabel {
        std::unique_ptr<Label> label;
        QRect frame;
    };

    /// A label without a parent whose text is centred, and its frame in a content area of the given
    /// width. `y`, `h`: the frame's lower edge and height. The left and right margins are 20
    /// points.
    static FramedLabel centeredLabel(const QString& text, const QFont& font, LabelColor color,
                                     int y, int h, int width);

  protected:
    std::unique_ptr<QWidget> loadWindow() override;
    void windowDidLoad() override { buildUI(); }

  private:
    void buildUI();

    const Bundle& _bundle;
    AuxiliaryWindow* _window = nullptr;  // null until the window is loaded
};

}  // namespace ambulet
