#pragma once

#include <string>

namespace ambulet {

/// The user's locale from the environment, by its ICU name ("de_DE", "sr_Latn_RS"), without a
/// codeset. "en_US" if the locale is C or POSIX, has an unknown language, or is not set. An empty
/// variable counts as not set. Any thread, as long as no other thread changes the environment.

/// For dates: LC_ALL, else LC_TIME, else LANG.
std::string dateLocale();

/// For numbers: LC_ALL, else LC_NUMERIC, else LANG.
std::string numberLocale();

}  // namespace ambulet
