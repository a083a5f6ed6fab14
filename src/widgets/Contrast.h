#pragma once

#include <QColor>

class QPalette;

namespace ambulet {

/// The least contrast that text has with its ground, and the least that marks such as focus
/// outlines and separators have (Web Content Accessibility Guidelines 2).
constexpr double textContrast = 4.5;
constexpr double markContrast = 3;

/// The contrast ratio of two opaque colours, from 1 to 21, as the guidelines define it.
double contrastRatio(const QColor& one, const QColor& other);

/// The colour at `share`, from 0 to 1, of the way between two opaque colours.
QColor mixed(const QColor& from, const QColor& to, double share);

/// Black or white: the one with the higher contrast with `ground`.
QColor blackOrWhite(const QColor& ground);

/// `wanted`, or the nearest colour to it on the way to `towards` whose contrast with `other` is at
/// least `ratio`; `towards` where there is none.
QColor withContrast(const QColor& wanted, const QColor& towards, const QColor& other, double ratio);

/// A line on the window's ground that stands back as far as `markContrast` allows.
QColor separatorColor(const QPalette& palette);

}  // namespace ambulet
