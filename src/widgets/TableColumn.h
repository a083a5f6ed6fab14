#pragma once

#include <QString>
#include <Qt>

namespace ambulet {

/// A column of a TableView.
struct TableColumn {
    QString identifier;  ///< names the column to the data source
    QString title;       ///< its header
    int width;           ///< at first, in points
    int minimumWidth;    ///< in points
    Qt::Alignment alignment;
};

}  // namespace ambulet
