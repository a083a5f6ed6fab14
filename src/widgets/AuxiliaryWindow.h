#pragma once

#include <QMargins>
#include <QWidget>

#include <optional>

class QMenuBar;

namespace ambulet {

class AutoresizingLayout;

/// A small window in addition to the main one. It has no parent and no minimise button, and opens
/// centred. Closing the window only hides it. Escape closes it.
///
/// The window consists of the content and, above the content, an optional menu bar. If the user's
/// font is larger than usual, one factor enlarges the content's initial size, the frames and fonts
/// of its views, and the minimum size of the window. At the usual font sizes the factor is 1.
///
/// The window manager adds the window's frame, often only after the window is on the screen. Sizes
/// and places that depend on this frame are corrected as soon as it is known. Where clients cannot
/// place their windows (Wayland), the compositor chooses the place. Main thread only.
class AuxiliaryWindow final : public QWidget {
    Q_OBJECT

  public:
    enum class Sizing { Fixed, Resizable };

    /// `content` is the content's initial size at factor 1, in points.
    AuxiliaryWindow(QSize content, Sizing sizing);

    /// The layout that the views are added to.
    AutoresizingLayout& content() { return *_content; }

    /// Adds a menu bar to a window without one. The window owns the bar and grows by its height.
    void addMenuBar(QMenuBar* menuBar);

    /// Sets the smallest size of the window, including its frame, at factor 1, in points. The
    /// available area of the screen limits this size.
    void setMinimumFrameSize(QSize size);

    /// Centres the window on its screen horizontally, and vertically with a quarter of the free
    /// height above it. A resizable window that is too large for the screen is first made smaller.
    /// A maximised or full-screen window is left alone.
    void center();

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void followUserFont();
    void frameMayHaveChanged();
    void applyMinimumFrameSize();

    const Sizing _sizing;
    AutoresizingLayout* _content;
    double _scale = 1;
    std::optional<QSize> _minimumFrameSize;
    std::optional<QMargins> _centeredWith;  // frame margins assumed by center(), to be checked
};

}  // namespace ambulet
