#pragma once

#include <QMargins>
#include <QWidget>

#include <optional>

namespace ambulet {

/// A small window beside the main one: it has no parent, no minimise button, and opens centred.
/// Closing it only hides it.
///
/// A window's frame is put on by the windowing system, often only after the window is on the
/// screen: what is said of the frame below is set right as soon as the frame is known. Where the
/// windowing system places windows itself, it does. Main thread only.
class AuxiliaryWindow final : public QWidget {
    Q_OBJECT

  public:
    enum class Sizing { Fixed, Resizable };

    /// `content`: the size at first, in points, without the frame.
    AuxiliaryWindow(QSize content, Sizing sizing);

    /// The window's frame cannot be made smaller than this.
    void setMinimumFrameSize(QSize size);

    /// Moves the window to the middle of the screen from left to right, and to where a quarter of
    /// the free height is above it. A resizable one that is too large for the screen is made to
    /// fit; one that fills the screen by the user's wish is left alone.
    void center();

  protected:
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void frameMayHaveChanged();
    void applyMinimumFrameSize();

    std::optional<QSize> _minimumFrameSize;
    std::optional<QMargins> _centeredWith;  // the margins of the last centring, until it is checked
};

}  // namespace ambulet
