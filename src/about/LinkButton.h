#pragma once

#include <QAbstractButton>

namespace ambulet {

/// A link: centred underlined text in the link colour. A click anywhere in the view presses the
/// link; so do Space, Return and Enter, a held key only once.
class LinkButton final : public QAbstractButton {
    Q_OBJECT

  public:
    LinkButton(const QString& text, const QFont& font);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace ambulet
