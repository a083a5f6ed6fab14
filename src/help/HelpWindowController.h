#pragma once

#include "widgets/WindowController.h"

#include <optional>

namespace ambulet {

class AuxiliaryWindow;
class Bundle;
class Button;
class ImageView;
class Label;

/// The Getting Started window: a guide of five pages, each a picture with a caption.
///
/// Closing the window only hides it. Everything but `sharedController` is for the main thread only.
class HelpWindowController final : public WindowController {
    Q_OBJECT

  public:
    /// The program's one controller, for the application's own bundle. The first call creates it;
    /// it is never destroyed. The application object must exist. Thread-safe; the controller
    /// belongs to the main thread whichever thread makes the first call.
    static HelpWindowController& sharedController();

    /// `bundle` provides the application's name and the pictures. It must outlive the controller.
    explicit HelpWindowController(const Bundle& bundle);

    /// Shows the page `page`, from 0 to 4. The image view is empty if the page's picture is missing
    /// or unreadable.
    void updateForPage(qsizetype page);

    /// Shows the next page. On the last page, closes the window and stays on that page.
    void nextPage();

    /// Shows the previous page. Does nothing on the first page.
    void prevPage();

    /// Shows the first page, brings the window to the front and centres it.
    void showWindow() override;

    qsizetype currentPage() const { return _currentPage; }

  protected:
    std::unique_ptr<QWidget> loadWindow() override;
    void windowDidLoad() override { buildUI(); }

  private:
    void buildUI();
    std::optional<QString> imagePath(qsizetype page) const;

    const Bundle& _bundle;
    qsizetype _currentPage = 0;

    // The window, which the base class owns, and its views. Null until the window is loaded.
    AuxiliaryWindow* _window = nullptr;
    ImageView* _imageView = nullptr;
    Label* _captionField = nullptr;
    Label* _pageIndicator = nullptr;
    Button* _prevButton = nullptr;
    Button* _nextButton = nullptr;
};

}  // namespace ambulet
