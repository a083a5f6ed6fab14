#pragma once

#include <QAbstractButton>

namespace ambulet {

/// A link: its text in the link colour and underlined, in the middle. The whole of the view can be
/// clicked; Space and Return press it too.
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
