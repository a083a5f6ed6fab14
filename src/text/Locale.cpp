#include "text/Locale.h"

#include <unicode/locid.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <string_view>

namespace ambulet {

namespace {

/// The value of an environment variable; empty if the variable is not set.
std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string_view() : value;
}

std::string_view firstOf(std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (const std::string_view value = variable(name); !value.empty()) {
            return value;
        }
    }
    return {};
}

/// ICU's name of the script that the modifier names; null if it names none. ICU puts the script
/// between language and region; the system puts it at the end, as a modifier.
const char* scriptOf(std::string_view modifier) {
    if (modifier == "latin") {
        return "Latn";
    }
    if (modifier == "cyrillic") {
        return "Cyrl";
    }
    return modifier == "devanagari" ? "Deva" : nullptr;
}

/// The ICU name of the system's locale `name`, which is language[_REGION][.codeset][@modifier].
std::string icuName(std::string_view name) {
    const std::size_t at = name.find('@');
    const std::string_view modifier =
        at == std::string_view::npos ? std::string_view() : name.substr(at + 1);
    const std::string_view plain = name.substr(0, name.find_first_of(".@"));
    if (plain == "C" || plain == "POSIX") {
        return "en_US";
    }
    std::string wanted(plain);
    if (const char* script = scriptOf(modifier)) {
        wanted.insert(std::min(wanted.find('_'), wanted.size()), std::string("_") + script);
    } else if (!modifier.empty()) {
        wanted.append("@").append(modifier);
    }
    const icu::Locale known = icu::Locale::createCanonical(wanted.c_str());
    const bool isLanguage = *known.getISO3Language() != '\0';
    return isLanguage ? known.getName() : "en_US";
}

}  // namespace

std::string dateLocale() {
    return icuName(firstOf({"LC_ALL", "LC_TIME", "LANG"}));
}

std::string numberLocale() {
    return icuName(firstOf({"LC_ALL", "LC_NUMERIC", "LANG"}));
}

}  // namespace ambulet
