#pragma once

#include <QColor>

class QWidget;

namespace ambulet {

/// The contrast ratio of two opaque colours, from 1 to 21, as the Web Content Accessibility
/// Guidelines 2 define it.
double contrastRatio(const QColor& one, const QColor& other);

/// `ground`, or where `ink` on it has less than `ratio`, the nearest darker or lighter shade of it
/// on which `ink` has as much; black or white at the utmost.
QColor readableGround(const QColor& ground, const QColor& ink, double ratio);

/// Has selected text in `widget` stand out by a contrast of 4.5 to 1 at least, which not every
/// palette gives it, now and whenever the application's palette changes.
void keepSelectionReadable(QWidget* widget);

}  // namespace ambulet
