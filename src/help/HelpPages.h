#pragma once

#include <QStringView>

#include <array>

namespace ambulet {

/// The guide's pages, one array element each: the picture's resource name and file type, and its
/// caption.
inline constexpr int helpPageCount = 5;

inline constexpr std::array<QStringView, helpPageCount> helpImageNames = {
    u"step_1", u"step_2", u"step_3", u"step_4", u"trodling-1",
};

inline constexpr std::array<QStringView, helpPageCount> helpImageTypes = {
    u"jpg", u"jpg", u"jpg", u"jpg", u"png",
};

inline constexpr std::array<QStringView, helpPageCount> helpCaptions = {
    u"Export the data from your phone by launching the Apple app called Health. In the Summary "
    u"tab, tap your name in the upper right.",
    u"Scroll to the bottom of that screen and look for \"Export All Health Data\".",
    u"Tap \"Export\".",
    u"Choose a destination that will get the data to your Mac, then use the \"Choose…\" button in "
    u"this app to open it.",
    u"You can select multiple days by holding down the Shift key to see data over a range of days, "
    u"or the Command key to select discontiguous days.",
};

}  // namespace ambulet
