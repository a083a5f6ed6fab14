#pragma once

#include <QString>
#include <Qt>

namespace ambulet {

/// A column of a TableView.
struct TableColumn {
    QString identifier;  ///< names the column to the data source
    QString title;       ///< the text of its header
    int width;           ///< the initial width in points, unless the texts need more
    int minimumWidth;    ///< in points
    Qt::Alignment alignment;
};

}  // namespace ambulet
