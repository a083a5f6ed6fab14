#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class QWidget;

namespace ambulet {

/// Opens a window where it was left and as large, and reports where it is so that the next start
/// can do the same. A place on a screen that is gone is brought back; a window that is larger than
/// its screen is made to fit once its frame is known. Main thread only.
class RememberedFrame final : public QObject {
    Q_OBJECT

  public:
    using Store = std::function<void(const QByteArray& frame)>;

    /// Owned by `window`, which must not be on the screen yet. `stored`: what `store` was given
    /// last, none at the very first start; damaged data count as none. `store` is called where the
    /// frame is another one half a second after the window's last move or resize, when it closes
    /// and when the program quits.
    static void attach(QWidget& window, const std::optional<QByteArray>& stored, Store store);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    RememberedFrame(QWidget& window, const std::optional<QByteArray>& stored, Store store);
    void save();

    QWidget& _window;
    std::optional<QByteArray> _stored;
    Store _store;
    QTimer _rest;  // runs from the last move or resize on
    bool _fitted = false;
};

}  // namespace ambulet
