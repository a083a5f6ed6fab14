#pragma once

#include "widgets/WindowController.h"

#include <optional>

class QPushButton;

namespace ambulet {

class AuxiliaryWindow;
class Bundle;
class ImageView;
class Label;

/// The Getting Started window: a guide of five pages, each a picture and what it shows.
///
/// A closed window is only hidden; each showing starts at the first page. Main thread only.
class HelpWindowController final : public WindowController {
    Q_OBJECT

  public:
    /// The program's one controller, on the application's own bundle. Made by the first call, once,
    /// whichever threads make it; never destroyed. The application object must exist.
    static HelpWindowController& sharedController();

    /// `bundle`: where the application's name and the pictures come from; must outlive the
    /// controller.
    explicit HelpWindowController(const Bundle& bundle);

    /// Shows page `page`, from 0 to 4. A picture that is missing or cannot be read leaves its place
    /// empty.
    void updateForPage(qsizetype page);

    /// To the next page; on the last one, closes the window and stays on that page.
    void nextPage();

    /// To the page before; nothing on the first.
    void prevPage();

    /// Shows the window in front, at the first page and centred, whatever it showed and wherever it
    /// stood.
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

    // The window's: all there once it is loaded.
    AuxiliaryWindow* _window = nullptr;
    ImageView* _imageView = nullptr;
    Label* _captionField = nullptr;
    Label* _pageIndicator = nullptr;
    QPushButton* _prevButton = nullptr;
    QPushButton* _nextButton = nullptr;
};

}  // namespace ambulet
