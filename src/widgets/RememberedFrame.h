#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class QWidget;

namespace ambulet {

/// Restores the position and size that a window had in the last run of the program, and reports
/// them when they change. A window on a screen that no longer exists is moved to another screen. A
/// window that is too large for its screen is made smaller once it is shown. Main thread only.
class RememberedFrame final : public QObject {
    Q_OBJECT

  public:
    using Store = std::function<void(const QByteArray& frame)>;

    /// Creates a RememberedFrame for `window`, which owns it and must not have been shown yet.
    ///
    /// `stored`: the data that `store` was last called with; empty at the first start. Damaged data
    /// is ignored.
    /// `store`: called with the frame if it has changed
    /// - half a second after the last move or resize,
    /// - when the window closes, and
    /// - when the program quits.
    static void attach(QWidget& window, const std::optional<QByteArray>& stored, Store store);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    RememberedFrame(QWidget& window, const std::optional<QByteArray>& stored, Store store);
    void save();

    QWidget& _window;
    std::optional<QByteArray> _stored;
    Store _store;
    QTimer _rest;  // started at each move or resize
    bool _fitted = false;
};

}  // namespace ambulet
