#pragma once

#include <QApplication>
#include <QFont>

namespace ambulet {

/// Sets the size of the application's font. The destructor restores it.
class ScopedFontSize {
  public:
    explicit ScopedFontSize(int pixels) {
        QFont font = _before;
        font.setPixelSize(pixels);
        QApplication::setFont(font);
    }
    ~ScopedFontSize() { QApplication::setFont(_before); }
    ScopedFontSize(const ScopedFontSize&) = delete;
    ScopedFontSize& operator=(const ScopedFontSize&) = delete;

  private:
    const QFont _before = QApplication::font();
};

}  // namespace ambulet
