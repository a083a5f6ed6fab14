// How wide the columns are.

#include "widgets/RowDelegate.h"
#include "widgets/TableModel.h"
#include "widgets/TableView.h"
#include "widgets/TableViewDataSource.h"

#include <QFontMetrics>

#include <algorithm>
#include <map>

namespace ambulet {

namespace {

/// Puts the widest digit of a font in place of all digits: the width that comes of it holds for
/// every text of that many digits.
class WidestDigits {
  public:
    explicit WidestDigits(const QFontMetrics& metrics) : _metrics(metrics) {}

    QString in(QString text) {
        for (QChar& character : text) {
            if (character.category() == QChar::Number_DecimalDigit) {
                character =
                    widest(static_cast<char16_t>(character.unicode() - character.digitValue()));
            }
        }
        return text;
    }

  private:
    QChar widest(char16_t zero) {
        const auto [found, isNew] = _widestByZero.try_emplace(zero, zero);
        for (char16_t digit = zero; isNew && digit <= zero + 9; ++digit) {
            if (_metrics.horizontalAdvance(QChar(digit)) >
                _metrics.horizontalAdvance(QChar(found->second))) {
                found->second = digit;
            }
        }
        return found->second;
    }

    QFontMetrics _metrics;
    std::map<char16_t, char16_t> _widestByZero;  // of each script
};

}  // namespace

// QHeaderView has one minimum for all its sections; ours differ.
void TableView::columnDidResize(int column, int /*oldWidth*/, int newWidth) {
    const int minimum = _model->columns()[static_cast<std::size_t>(column)].minimumWidth;
    if (newWidth < minimum) {
        setColumnWidth(column, minimum);
    } else {
        fitLastColumn();
    }
}

// The last column takes up what the others leave, and is never below its own minimum: past that
// the table scrolls sideways. (The header's own stretching knows one minimum for all sections.)
void TableView::fitLastColumn() {
    const int last = _model->columnCount() - 1;
    if (last < 0) {
        return;
    }
    int others = 0;
    for (int column = 0; column < last; ++column) {
        others += columnWidth(column);
    }
    const int minimum = _model->columns()[static_cast<std::size_t>(last)].minimumWidth;
    const int left = viewport()->width() - others;
    // Set by hand: where the vertical scroll bar comes, the columns are too wide for a moment.
    setHorizontalScrollBarPolicy(left < minimum ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setColumnWidth(last, std::max(minimum, left));
}

// Larger fonts and longer languages need wider columns than the ones asked for. A column that the
// user has set is left alone.
void TableView::fitColumnsToTexts() {
    for (int column = 0; column < static_cast<int>(_ownWidths.size()) - 1; ++column) {
        int& own = _ownWidths[static_cast<std::size_t>(column)];
        if (columnWidth(column) == own) {
            const int asked = _model->columns()[static_cast<std::size_t>(column)].width;
            own = std::max(asked, widthOfTexts(column));
            setColumnWidth(column, own);
        }
    }
}

int TableView::widthOfTexts(int column) const {
    int widest = fontMetrics().horizontalAdvance(
        _model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    if (_model->dataSource() != nullptr && _model->rowCount() > 0) {
        QFont bold = font();
        bold.setBold(true);
        const QFontMetrics groupMetrics(bold);
        WidestDigits digits(fontMetrics());
        WidestDigits groupDigits(groupMetrics);
        const QString& identifier = _model->columns()[static_cast<std::size_t>(column)].identifier;
        for (const int row : _model->dataSource()->rowsWithWidestTexts(identifier)) {
            const QModelIndex index = _model->index(row, column);
            const bool group = index.data(TableModel::groupRole).toBool();
            const QString text = (group ? groupDigits : digits).in(index.data().toString());
            widest =
                std::max(widest, (group ? groupMetrics : fontMetrics()).horizontalAdvance(text));
        }
    }
    return widest + spaceBesideTexts();
}

int TableView::spaceBesideTexts() const {
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    return 2 * (RowDelegate::padding + margin) + 1;
}

}  // namespace ambulet
