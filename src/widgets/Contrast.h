#pragma once

#include <QColor>

class QPalette;

namespace ambulet {

/// The lowest allowed contrast with the background: of text, and of marks such as focus outlines
/// and separators (Web Content Accessibility Guidelines 2).
constexpr double textContrast = 4.5;
constexpr double markContrast = 3;

/// The contrast ratio of two opaque colours, from 1 to 21, as the guidelines define it.
double contrastRatio(const QColor& one, const QColor& other);

/// A mixture of two opaque colours: `from` at a share of 0, `to` at a share of 1.
QColor mixed(const QColor& from, const QColor& to, double share);

/// Black or white: the one with the higher contrast with `ground`.
QColor blackOrWhite(const QColor& ground);

/// `wanted`, mixed with just enough of `towards` to have a contrast of at least `ratio` with
/// `other`. `towards` if no mixture has that contrast.
QColor withContrast(const QColor& wanted, const QColor& towards, const QColor& other, double ratio);

/// The colour of text that is fainter than `text`, as far as `textContrast` with `ground` allows.
QColor faintText(const QColor& text, const QColor& ground);

/// The background of a group row in a table.
QColor groupRowColor(const QPalette& palette);

/// The colour of a line on the background of a window, a table or a group row: as faint as a
/// contrast of `markContrast` with each of these backgrounds allows.
QColor separatorColor(const QPalette& palette);

}  // namespace ambulet
