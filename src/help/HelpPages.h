#pragma once

#include <QStringView>

#include <array>

namespace ambulet {

/// The guide's pages. Each array has one element for each page: the picture's resource name, its
/// file type, what it shows, or the caption. Two captions name the Mac or the Command key, on all
/// systems.
inline constexpr int helpPageCount = 5;

inline constexpr std::array<QStringView, helpPageCount> helpImageNames = {
    u"step_1", u"step_2", u"step_3", u"step_4", u"trodling-1",
};

inline constexpr std::array<QStringView, helpPageCount> helpImageTypes = {
    u"jpg", u"jpg", u"jpg", u"jpg", u"png",
};

inline constexpr std::array<QStringView, helpPageCount> helpImageDescriptions = {
    u"The Summary tab of the Health app. An arrow points at the name in the upper right.",
    u"The end of the profile in the Health app. An arrow points at \"Export All Health Data\".",
    u"A question in the Health app: \"Export Health data?\" An arrow points at \"Export\".",
    u"The phone sends export.zip to the computer, where it is unpacked to export.xml. An arrow "
    u"points "
    u"at the \"Choose…\" button in the application's window.",
    u"The application's window. The Shift key has selected a range of days, the Ctrl key another "
    u"day.",
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
