#pragma once

#include "widgets/LineLabel.h"

namespace ambulet {

/// A line that tells the user what the program is doing. Assistive programs see a notification.
///
/// Construct it without a text and set the text later. Otherwise QLabel's constructor creates the
/// accessible interface of a plain label.
class StatusLabel final : public LineLabel {
    Q_OBJECT

  public:
    explicit StatusLabel(QWidget* parent = nullptr);

    /// Shows `text`, and reports it to assistive programs as a notification that has appeared.
    void announce(const QString& text);
};

}  // namespace ambulet
