#pragma once

#include <QLabel>

namespace ambulet {

/// A line of plain text. A text that is wider than the label ends with an ellipsis, and the tooltip
/// has the whole text. Assistive programs always see the whole text.
class LineLabel : public QLabel {
    Q_OBJECT

  public:
    using QLabel::QLabel;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    /// Draws the line `text`, which may differ from the label's text.
    void drawLine(QPainter& painter, const QString& text) const;

  private:
    QString elided(const QString& text) const;
};

}  // namespace ambulet
