// Phones write UTF-8 without a byte order mark. Other encodings and byte order marks are read, too.

#include "import/Reading.h"

#include <gtest/gtest.h>

#include <string>

namespace ambulet {

namespace {

using namespace std::string_literals;

std::string declared(const char* encoding, std::string_view name) {
    return "<?xml version=\"1.0\" encoding=\""s + encoding + "\"?><HealthData><Device name=\"" +
           std::string(name) + "\"/>" + step(noon9, "5") + "</HealthData>";
}

std::string utf16(std::string_view ascii, bool bigEndian) {
    std::string result;
    for (const char character : ascii) {
        result += bigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    }
    return result;
}

void expectTheDay(std::string_view bytes) {
    EXPECT_EQ(read(bytes), (Reading{ninth, {}}));
}

TEST(Encodings, utf8WithAByteOrderMarkIsRead) {
    expectTheDay("\xEF\xBB\xBF" + document(step(noon9, "5")));
    expectTheDay("\xEF\xBB\xBF" + declared("UTF-8", "\u2019"));
}

TEST(Encodings, utf16IsRead) {
    const std::string bytes = declared("UTF-16", "Phone");
    expectTheDay("\xFE\xFF" + utf16(bytes, true));
    expectTheDay("\xFF\xFE" + utf16(bytes, false));
}

TEST(Encodings, theOffsetOfAnErrorInUtf16IsInBytes) {
    const std::string bytes = declared("UTF-16", "Phone") + "junk";
    const std::uint64_t junk = 2 + 2 * byteOf(bytes, "junk");
    EXPECT_EQ(read("\xFF\xFE" + utf16(bytes, false)),
              (Reading{ninth, XMLError{junk, XMLErrorReason::junkAfterRoot}}));
}

TEST(Encodings, utf16NeedsNoByteOrderMarkAndNoDeclaration) {
    for (const bool bigEndian : {true, false}) {
        for (const char* before : {"", "\n", "<!-- a -->"}) {
            expectTheDay(
                utf16(before + ("<HealthData>" + step(noon9, "5")) + "</HealthData>", bigEndian));
        }
    }
}

// In UTF-16, two bytes of an ASCII text are one character, usually of another script.
TEST(Encodings, utf16TextWithTheBytesOfARecordIsNotARecord) {
    std::string record = step(noon9, "5");
    record.append(record.size() % 2, '\n');
    for (const bool bigEndian : {true, false}) {
        for (const char* mark : {"", bigEndian ? "\xFE\xFF" : "\xFF\xFE"}) {
            for (const char* before : {"", "\n", "<?xml version='1.0' encoding='UTF-16'?>",
                                       "<!DOCTYPE HealthData [ junk ]>"}) {
                EXPECT_EQ(read(mark + utf16(before + "<HealthData>"s, bigEndian) + record +
                               utf16("</HealthData>", bigEndian)),
                          Reading())
                    << bigEndian << mark << before;
            }
        }
    }
}

TEST(Encodings, latin1AndAsciiAreRead) {
    expectTheDay(declared("ISO-8859-1", "J\xFCrgens Telefon"));
    expectTheDay(declared("US-ASCII", "Telefon"));
}

TEST(Encodings, encodingsThatExpatLacksAreRead) {
    expectTheDay(declared("windows-1252", "J\xFCrgen\x92s Telefon"));
    expectTheDay(declared("ISO-8859-15", "\xA4"));
    expectTheDay(declared("KOI8-R", "\xD4\xC5\xCC\xC5\xC6\xCF\xCE"));
    expectTheDay(declared("Shift_JIS", "\x83\x74\x83\x48\x83\x93\xB1"));
    expectTheDay(declared("Big5", "\xB9\x71\xB8\xDC"));
    expectTheDay(declared("GBK", "\xB5\xE7\xBB\xB0"));
}

TEST(Encodings, bytesAreDecodedByTheDeclaredEncoding) {
    // Spaces may precede a number, letters may not. 0xA0 is a no-break space in windows-1252 and a
    // letter in code page 437, in which the no-break space is 0xFF.
    const auto value = [](const char* encoding, const char* text) {
        return read("<?xml version=\"1.0\" encoding=\""s + encoding + "\"?><a>" +
                    step(noon9, text) + "</a>");
    };
    EXPECT_EQ(value("windows-1252", "\xA0"
                                    "5"),
              (Reading{ninth, {}}));
    EXPECT_EQ(value("IBM437", "\xA0"
                              "5"),
              (Reading{{{"2024-03-09", 0}}, {}}));
    EXPECT_EQ(value("IBM437", "\xFF"
                              "5"),
              (Reading{ninth, {}}));
    EXPECT_EQ(value("Shift_JIS", "\x81\x40"
                                 "5"),
              (Reading{ninth, {}}));  // an ideographic space
}

TEST(Encodings, bytesThatAreInvalidInTheEncodingAreAnError) {
    for (const auto& [encoding, name] :
         {std::pair("ISO-8859-7", "\xFF"), std::pair("GBK", "\x81\x20"),
          std::pair("Shift_JIS", "\x81\x01")}) {
        const std::string bytes = declared(encoding, name);
        EXPECT_EQ(read(bytes),
                  (Reading{{}, XMLError{byteOf(bytes, name), XMLErrorReason::invalidToken}}))
            << encoding;
    }
}

TEST(Encodings, anUnknownEncodingIsAnError) {
    for (const char* encoding : {"no-such-encoding", "UTF-7", "UTF-32", "IBM037"}) {
        const std::string bytes = declared(encoding, "Phone");
        EXPECT_EQ(read(bytes),
                  (Reading{{}, XMLError{byteOf(bytes, encoding), XMLErrorReason::unknownEncoding}}))
            << encoding;
    }
}

TEST(Encodings, aDeclarationOfUtf16InADocumentOfSingleBytesIsAnError) {
    const std::string bytes = declared("UTF-16", "Phone");
    EXPECT_EQ(read(bytes),
              (Reading{{}, XMLError{byteOf(bytes, "UTF-16"), XMLErrorReason::wrongEncoding}}));
}

}  // namespace

}  // namespace ambulet
