#pragma once

#include <string>

namespace ambulet {

/// The user's locale as the environment has it, under ICU's name for it ("de_DE", "sr_Latn_RS").
/// Codesets ("UTF-8") are left out; the locales C and POSIX, an unknown language, and no locale at
/// all are "en_US".
/// Any thread, as long as no other changes the environment.

/// For dates: LC_ALL, else LC_TIME, else LANG.
std::string dateLocale();

/// For numbers: LC_ALL, else LC_NUMERIC, else LANG.
std::string numberLocale();

}  // namespace ambulet
