#include "text/InstantReader.h"

#include "support/Environment.h"

#include <gtest/gtest.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <cstdio>
#include <string>

namespace ambulet {

namespace {

using namespace std::chrono;

using Instant = std::optional<sys_seconds>;

Instant read(std::string_view text) {
    return InstantReader().instant(text);
}
Instant at(std::int64_t secondsSince1970) {
    return sys_seconds(seconds(secondsSince1970));
}

// Reads texts with ICU alone. The result is empty if ICU does not read the whole text.
class IcuReader {
  public:
    IcuReader() : _format(u"yyyy-MM-dd HH:mm:ss Z", icu::Locale("en_US"), _status) {
        EXPECT_TRUE(U_SUCCESS(_status));
        _format.adoptCalendar(new icu::GregorianCalendar(*icu::TimeZone::getGMT(), _status));
        _format.setLenient(false);
    }

    Instant instant(const std::string& text) const {
        icu::ParsePosition end(0);
        const UDate milliseconds = _format.parse(icu::UnicodeString::fromUTF8(text), end);
        const bool isWhole = end.getIndex() == static_cast<int>(text.size());
        return isWhole ? at(static_cast<std::int64_t>(milliseconds) / 1000) : std::nullopt;
    }

  private:
    UErrorCode _status = U_ZERO_ERROR;
    icu::SimpleDateFormat _format;
};

template <typename... Fields>
std::string form(const char* format, Fields... fields) {
    char text[100];
    std::snprintf(text, sizeof text, format, fields...);
    return text;
}

TEST(InstantReader, readsTheFormThatPhonesWrite) {
    EXPECT_EQ(read("2024-03-09 07:15:02 -0800"), at(1709997302));
    EXPECT_EQ(read("2024-03-09 23:30:00 -0800"), at(1710055800));
    EXPECT_EQ(read("2000-02-29 23:59:59 +1345"), at(951819299));
    EXPECT_EQ(read("1969-12-31 23:59:59 +0000"), at(-1));
    EXPECT_EQ(read("9999-12-31 23:59:59 -2359"), at(253402387139));
    EXPECT_EQ(read("1583-01-01 00:00:00 +0000"), at(-12212553600));
}

TEST(InstantReader, readsTheOtherSpellingsOfAnOffset) {
    for (const char* offset : {"-08:00", "-08", "GMT-8", "GMT-08:00"}) {
        EXPECT_EQ(read(std::string("2024-03-09 07:15:02 ") + offset), at(1709997302)) << offset;
    }
    EXPECT_EQ(read("2024-03-09 15:15:02 Z"), at(1709997302));
    EXPECT_EQ(read("2024-03-09 15:15:02 UTC"), at(1709997302));
    EXPECT_EQ(read("2024-03-09 15:15:02 GMT"), at(1709997302));
}

TEST(InstantReader, readsOneDigitMonthsAndHoursRepeatedBlanksAndArabicDigits) {
    EXPECT_EQ(read("2024-3-09 7:15:02 -0800"), at(1709997302));
    EXPECT_EQ(read("  2024-03-09   07:15:02  -0800"), at(1709997302));
    EXPECT_EQ(read("٢٠٢٤-٠٣-٠٩ ٠٧:١٥:٠٢ -0800"), at(1709997302));
}

TEST(InstantReader, readsFieldsWithAdditionalDigits) {
    EXPECT_EQ(read("02024-003-009 007:015:002 -0800"), at(1709997302));
}

// ICU 72 refuses one-digit days, minutes and seconds, although it reads one-digit months and hours.
// ICU 76 reads all of them.
TEST(InstantReader, leavesOneDigitDaysMinutesAndSecondsToIcu) {
    const IcuReader icu;
    for (const char* text :
         {"2024-03-9 07:15:02 -0800", "2024-03-09 07:5:02 -0800", "2024-03-09 07:15:2 -0800"}) {
        EXPECT_EQ(read(text), icu.instant(text)) << text;
    }
}

TEST(InstantReader, refusesExponentsInEveryField) {
    for (const char* text :
         {"1e3-03-09 07:15:02 -0800", "1E3-03-09 07:15:02 -0800", "1E+3-03-09 07:15:02 -0800",
          "1e-0-03-09 07:15:02 -0800", "2024e0-03-09 07:15:02 -0800", "1e4-03-09 07:15:02 -0800",
          "2024-3e0-09 07:15:02 -0800", "2024-1e1-09 07:15:02 -0800", "2024-03-1e1 07:15:02 -0800",
          "2024-03-09 1e1:15:02 -0800", "2024-03-09 07:1e1:02 -0800", "2024-03-09 07:15:1e1 -0800",
          "2024-03-09 07:15:02 -1e1", "2024-03-09 07:15:02 GMT-1e1", "٢e٣-03-09 07:15:02 -0800"}) {
        EXPECT_EQ(read(text), std::nullopt) << text;
    }
}

TEST(InstantReader, blanksAndTabsMayFollow) {
    EXPECT_EQ(read("2024-03-09 07:15:02 -0800 \t "), at(1709997302));
}

TEST(InstantReader, nothingButBlanksAndTabsMayFollow) {
    for (const char* rest : {"x", " x", "\n", "\u00A0", " -0800", "."}) {
        EXPECT_EQ(read(std::string("2024-03-09 07:15:02 -0800") + rest), std::nullopt) << rest;
    }
    EXPECT_EQ(read(std::string_view("2024-03-09 07:15:02 -0800\0", 26)), std::nullopt);
}

TEST(InstantReader, refusesOtherForms) {
    for (const char* text :
         {"", " ", "abc", "2024-03-09", "2024-03-09 07:15:02", "2024-03-09 07:15:02 ",
          "2024-03-09T07:15:02-0800", "2024-03-09T07:15:02 -0800", "2024-03-09 07:15 -0800",
          "2024/03/09 07:15:02 -0800", "09-03-2024 07:15:02 -0800", "2024-Mar-09 07:15:02 -0800",
          "2024-03-09 07:15:02 PST", "2024-03-09 07:15:02.5 -0800", "2024-03-09 07.15.02 -0800",
          "2024-03-09 07:15:02 0800", "1709997302", "2024-03-09 07:15:02 -080x", "\xFF\xFE"}) {
        EXPECT_EQ(read(text), std::nullopt) << text;
    }
}

TEST(InstantReader, refusesFieldsOutOfRange) {
    for (const char* text :
         {"2024-00-09 07:15:02 -0800", "2024-13-09 07:15:02 -0800", "2024-03-00 07:15:02 -0800",
          "2024-03-32 07:15:02 -0800", "2024-02-30 07:15:02 -0800", "2023-02-29 07:15:02 -0800",
          "1900-02-29 07:15:02 -0800", "2024-04-31 07:15:02 -0800", "2024-03-09 24:00:00 -0800",
          "2024-03-09 07:60:02 -0800", "2024-03-09 07:15:60 -0800", "2024-03-09 07:15:02 -2400",
          "2024-03-09 07:15:02 -0860", "0000-03-09 07:15:02 -0800"}) {
        EXPECT_EQ(read(text), std::nullopt) << text;
    }
}

TEST(InstantReader, refusesYearsAfter32766) {
    EXPECT_NE(read("12024-03-09 07:15:02 -0800"), std::nullopt);
    EXPECT_NE(read("32766-12-31 00:00:00 +0000"), std::nullopt);
    EXPECT_EQ(read("32767-01-01 00:00:00 +0000"), std::nullopt);
    EXPECT_EQ(read("5000000-01-01 00:00:00 +0000"), std::nullopt);
    EXPECT_EQ(read("99999999999999-01-01 00:00:00 +0000"), std::nullopt);
}

TEST(InstantReader, readsTheSameInstantInEveryLocaleAndTimeZone) {
    for (const char* name : {"C", "th_TH.UTF-8", "fa_IR.UTF-8", "ar_EG.UTF-8", "ja_JP.UTF-8"}) {
        const ScopedLocale locale(name);
        const ScopedTimeZone zone("Asia/Bangkok");
        EXPECT_EQ(read("2024-03-09 07:15:02 -0800"), at(1709997302)) << name;
        EXPECT_EQ(read("2024-3-09 7:15:02 -08:00"), at(1709997302)) << name;
    }
}

TEST(InstantReader, oneReaderCanAlternateBetweenExactAndOtherForms) {
    InstantReader reader;
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(reader.instant("2024-03-09 07:15:02 -0800"), at(1709997302));
        EXPECT_EQ(reader.instant("2024-03-09 07:15:02 -08"), at(1709997302));
        EXPECT_EQ(reader.instant("no"), std::nullopt);
    }
}

TEST(InstantReader, theTextReadBeforeMakesNoDifference) {
    const std::string texts[] = {"2024-03-09 07:15:02 -0800",
                                 "2024-03-09 23:59:59 -0800",
                                 "2024-03-09 24:00:00 -0800",
                                 "2024-03-09 07:15:02 -0700",
                                 "2024-03-09 07:15:02 +0800",
                                 "2024-03-10 07:15:02 -0800",
                                 "2023-03-09 07:15:02 -0800",
                                 "2024-02-30 07:15:02 -0800",
                                 "2024-03-09 07:15:02 -0860",
                                 "2024-03-09 07:15:0x -0800",
                                 "2024-03-09T07:15:02 -0800",
                                 "2024-03-09 07:15:02  0800",
                                 "1970-01-01 00:00:01 +0000",
                                 "1500-03-09 07:15:02 -0800",
                                 std::string(25, '\0'),
                                 "2024-03-09 07:15:02 -08",
                                 std::string(11, '\0') + "07:15:02" + std::string(6, '\0')};
    for (const std::string& before : texts) {
        for (const std::string& text : texts) {
            InstantReader reader;
            reader.instant(before);
            EXPECT_EQ(reader.instant(text), InstantReader().instant(text))
                << before << ", " << text;
        }
    }
}

TEST(InstantReader, readsTheExactFormWithoutIcu) {
    EXPECT_EQ(InstantReader::exactInstant("2024-03-09 07:15:02 -0800"), at(1709997302));
    for (const char* text : {"2024-03-09 07:15:02 -08:0", "2024-03-09 07:15:02 Z", "",
                             "2024-03-09 07:15:02 -0800 ", " 2024-03-09 07:15:02 -0800"}) {
        EXPECT_EQ(InstantReader::exactInstant(text), std::nullopt) << text;
    }
}

// Reads the same texts with exactInstant ("by hand") and with ICU:
// - If exactInstant reads a text, ICU reads the same instant.
// - If ICU reads a text of the exact form in a year from 1583 on, exactInstant reads the text, too.
class ByHandAndByIcu : public testing::Test {
  protected:
    void compare(const std::string& text) {
        const Instant byHand = InstantReader::exactInstant(text);
        const Instant byIcu = _icu.instant(text);
        if (byHand || text >= "1583") {
            ASSERT_EQ(byHand, byIcu) << text;
        }
        ++_compared;
        _read += byHand ? 1 : 0;
    }

    IcuReader _icu;
    int _compared = 0;
    int _read = 0;
};

TEST_F(ByHandAndByIcu, agreeOnEveryDateOfManyYears) {
    for (const int year : {0,    1,    4,    1000, 1581, 1582, 1583, 1584, 1600, 1699, 1700,
                           1899, 1900, 1904, 1969, 1970, 1972, 1999, 2000, 2001, 2004, 2023,
                           2024, 2025, 2037, 2038, 2100, 2399, 2400, 8999, 9996, 9999}) {
        for (int month = 0; month <= 13; ++month) {
            for (int day = 0; day <= 32; ++day) {
                compare(form("%04d-%02d-%02d 12:34:56 +0000", year, month, day));
            }
        }
    }
    // 26 of the years are 1583 or later. Nine of these are leap years: 1584, 1600, 1904, 1972,
    // 2000, 2004, 2024, 2400 and 9996.
    EXPECT_EQ(_compared, 32 * 14 * 33);
    EXPECT_EQ(_read, 26 * 365 + 9);
}

TEST_F(ByHandAndByIcu, agreeOnEveryTimeOfDay) {
    for (int hour = 0; hour <= 99; ++hour) {
        for (int minute = 0; minute <= 99; ++minute) {
            compare(form("2024-02-29 %02d:%02d:09 -0330", hour, minute));
        }
    }
    for (int second = 0; second <= 99; ++second) {
        compare(form("2024-02-29 09:08:%02d -0330", second));
    }
    EXPECT_EQ(_read, 24 * 60 + 60);
}

TEST_F(ByHandAndByIcu, agreeOnEveryOffset) {
    for (const char sign : {'+', '-'}) {
        for (int offset = 0; offset <= 9999; ++offset) {
            compare(form("2024-02-29 09:08:07 %c%04d", sign, offset));
        }
    }
    EXPECT_EQ(_read, 2 * 24 * 60);
}

TEST_F(ByHandAndByIcu, agreeOnTextsWithOneOtherCharacterThatAreReadByHand) {
    const std::string exact = "2024-02-09 07:15:02 -0800";
    for (std::size_t at = 0; at < exact.size(); ++at) {
        for (int character = 1; character < 128; ++character) {
            std::string text = exact;
            text[at] = static_cast<char>(character);
            const Instant byHand = InstantReader::exactInstant(text);
            if (byHand) {
                ASSERT_EQ(byHand, _icu.instant(text)) << text;
            }
        }
    }
}

}  // namespace

}  // namespace ambulet
