#include "text/DateFormatter.h"

#include "support/Environment.h"

#include <gtest/gtest.h>
#include <unicode/datefmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>

namespace ambulet {

namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

constexpr sys_seconds march2 = sys_days(2025y / March / 2);

// ICU's own text for 2 March 2025.
std::string byIcu(icu::DateFormat& format) {
    format.setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    format.format(duration<double, std::milli>(march2.time_since_epoch()).count(), text);
    std::string utf8;
    return text.toUTF8String(utf8);
}

std::string mediumByIcu(const char* locale) {
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, icu::Locale(locale)));
    return byIcu(*format);
}

std::string patternByIcu(const char16_t* pattern, const char* locale) {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString(pattern), icu::Locale(locale), status);
    EXPECT_TRUE(U_SUCCESS(status));
    return byIcu(format);
}

TEST(DateFormatter, showsADateInTheMediumStyleWithoutATimeOfDay) {
    EXPECT_EQ(DateFormatter::mediumDate().string(march2), "Mar 2, 2025");
    EXPECT_EQ(DateFormatter::mediumDate().string(march2 + 13h + 5min), "Mar 2, 2025");
}

TEST(DateFormatter, showsAMonthAndAYear) {
    EXPECT_EQ(DateFormatter::withPattern("MMMM yyyy").string(march2), "March 2025");
}

TEST(DateFormatter, followsTheUsersLocale) {
    for (const char* name : {"de_DE", "fr_FR", "pl_PL", "ja_JP", "ar_EG", "sr_Latn_RS"}) {
        const ScopedLocale locale(name);
        EXPECT_EQ(DateFormatter::mediumDate().string(march2), mediumByIcu(name));
        EXPECT_EQ(DateFormatter::withPattern("MMMM yyyy").string(march2),
                  patternByIcu(u"MMMM yyyy", name));
        EXPECT_NE(DateFormatter::mediumDate().string(march2), mediumByIcu("en_US"));
    }
}

// Polish has another form (LLLL) for the name of a month alone.
TEST(DateFormatter, usesTheGrammaticalFormOfAMonthNameInADate) {
    const ScopedLocale polish("pl_PL.UTF-8");
    const std::string title = DateFormatter::withPattern("MMMM yyyy").string(march2);
    EXPECT_EQ(title, patternByIcu(u"MMMM yyyy", "pl_PL"));
    EXPECT_NE(title, patternByIcu(u"LLLL yyyy", "pl_PL"));
}

TEST(DateFormatter, followsTheLocalesOwnCalendar) {
    // 2025 is 2568 of the Buddhist calendar; 2 March is 12 Esfand 1403 of the Persian one.
    const ScopedLocale thai("th_TH.UTF-8");
    EXPECT_NE(DateFormatter::mediumDate().string(march2).find("2568"), std::string::npos);
    EXPECT_EQ(DateFormatter::withPattern("yyyy-MM").string(march2), "2568-03");
    const ScopedLocale persian("fa_IR@numbers=latn");
    EXPECT_EQ(DateFormatter::withPattern("yyyy-MM-dd").string(march2), "1403-12-12");
}

TEST(DateFormatter, keepsTheLocaleThatWasSetWhenItWasMade) {
    const DateFormatter formatter = DateFormatter::mediumDate();
    const ScopedLocale german("de_DE.UTF-8");
    EXPECT_EQ(formatter.string(march2), "Mar 2, 2025");
}

TEST(DateFormatter, showsTheDateInTheUsersTimeZone) {
    const sys_seconds instant = sys_days(2024y / March / 10) + 7h + 30min;
    const DateFormatter formatter = DateFormatter::mediumDate();
    for (const auto& [zone, date] : {std::pair("America/Los_Angeles", "Mar 9, 2024"),
                                     std::pair("Europe/Berlin", "Mar 10, 2024"),
                                     std::pair("Pacific/Kiritimati", "Mar 10, 2024"),
                                     std::pair("Pacific/Pago_Pago", "Mar 9, 2024")}) {
        const ScopedTimeZone local(zone);
        EXPECT_EQ(formatter.string(instant), date) << zone;
    }
}

TEST(DateFormatter, usesTheSystemsTimeZoneRulesAndNotIcus) {
    // Egypt reintroduced summer time in 2023: in Cairo, 1 July 21:30 UTC was 2 July 00:30.
    const ScopedTimeZone cairo("Africa/Cairo");
    EXPECT_EQ(DateFormatter::withPattern("yyyy-MM-dd HH:mm")
                  .string(sys_days(2023y / July / 1) + 21h + 30min),
              "2023-07-02 00:30");
}

TEST(DateFormatter, canBeMoved) {
    DateFormatter first = DateFormatter::withPattern("yyyy");
    DateFormatter second = std::move(first);
    EXPECT_EQ(second.string(march2), "2025");
    second = DateFormatter::withPattern("MM");
    EXPECT_EQ(second.string(march2), "03");
}

}  // namespace

}  // namespace ambulet
