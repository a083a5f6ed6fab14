#pragma once

#include <QMargins>
#include <QWidget>

#include <optional>

namespace ambulet {

/// A small window beside the main one. It has no parent and no minimise button, and opens centred.
/// Closing it only hides it.
///
/// The window manager adds the frame, often only after the window is on the screen. Sizes and
/// places that depend on the frame are corrected as soon as it is known. Where clients cannot place
/// their windows (Wayland), the compositor chooses the place. Main thread only.
class AuxiliaryWindow final : public QWidget {
    Q_OBJECT

  public:
    enum class Sizing { Fixed, Resizable };

    /// `content` is the initial size without the frame, in points.
    AuxiliaryWindow(QSize content, Sizing sizing);

    /// Sets the smallest size of the window including its frame, in points.
    void setMinimumFrameSize(QSize size);

    /// Centres the window on its screen horizontally, and vertically with a quarter of the free
    /// height above it. A resizable window that is too large for the screen is first made smaller.
    /// A maximised or full-screen window is left alone.
    void center();

  protected:
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void frameMayHaveChanged();
    void applyMinimumFrameSize();

    std::optional<QSize> _minimumFrameSize;
    std::optional<QMargins> _centeredWith;  // frame margins assumed by center(), to be checked
};

}  // namespace ambulet
