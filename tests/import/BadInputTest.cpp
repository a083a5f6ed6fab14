// Documents that no phone should write. The records before the first error count. `read` checks
// that the size of the blocks makes no difference.

#include "import/Reading.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <string>

namespace ambulet {

namespace {

using namespace std::string_literals;

// Puts `part` between two records. Expects an error `more` bytes after the beginning of `part`, and
// that only the first record counts.
void expectStopIn(std::string_view part, std::uint64_t more, XMLErrorReason reason) {
    const std::string bytes = around(part);
    const XMLError stop{byteOf(bytes, part, more), reason};
    EXPECT_EQ(read(bytes), (Reading{ninth, stop}));
}

void expectNothing(std::string_view bytes, std::uint64_t stop, XMLErrorReason reason) {
    EXPECT_EQ(read(bytes), (Reading{{}, XMLError{stop, reason}}));
}

void expectBothDays(std::string_view bytes) {
    EXPECT_EQ(read(bytes), (Reading{both, {}}));
}

TEST(BadInput, anEmptyFileHasNoDays) {
    expectNothing("", 0, XMLErrorReason::noElement);
}

TEST(BadInput, aFileOfWhiteSpaceHasNoDays) {
    expectNothing(" \n\n", 3, XMLErrorReason::noElement);
}

TEST(BadInput, aZipArchiveHasNoDays) {
    expectNothing("PK\x03\x04\x14\x00\x08\x00\x08\x00"s, 2, XMLErrorReason::invalidToken);
}

TEST(BadInput, aPictureHasNoDays) {
    expectNothing("\x89PNG\r\n\x1A\n\x00\x00\x00\rIHDR"s, 0, XMLErrorReason::invalidToken);
}

TEST(BadInput, anotherKindOfXMLDocumentHasNoDays) {
    EXPECT_EQ(
        read("<?xml version=\"1.0\"?>\n<?xml-stylesheet type=\"text/xsl\" href=\"CDA.xsl\"?>\n"
             "<ClinicalDocument xmlns=\"urn:hl7-org:v3\"><realmCode code=\"US\"/>"
             "<component><section><title>Steps</title></section></component>"
             "</ClinicalDocument>"),
        Reading());
}

TEST(BadInput, recordsCountUnderARootOfAnyName) {
    expectBothDays("<Export>" + step(noon9, "5") + step(noon10, "7") + "</Export>");
}

TEST(BadInput, aDocumentCutOffInsideATagKeepsTheRecordsBeforeIt) {
    const std::string whole = around("");
    const std::uint64_t tag = byteOf(whole, step(noon10, "7"));
    for (const std::size_t length : {1U, 7U, 30U, 90U, 115U}) {
        EXPECT_EQ(read(whole.substr(0, tag + length)),
                  (Reading{ninth, XMLError{tag, XMLErrorReason::unclosedToken}}));
    }
}

TEST(BadInput, aDocumentCutOffBetweenTagsKeepsTheRecordsBeforeTheEnd) {
    const std::string whole = around("");
    const std::uint64_t end = byteOf(whole, "</HealthData>");
    EXPECT_EQ(read(whole.substr(0, end)),
              (Reading{both, XMLError{end, XMLErrorReason::noElement}}));
}

TEST(BadInput, aMismatchedEndTagIsAnError) {
    expectStopIn("<Workout></workout>", 11, XMLErrorReason::mismatchedTag);
    expectStopIn("</Record>", 2, XMLErrorReason::mismatchedTag);
}

TEST(BadInput, aSecondRootIsAnError) {
    const std::string first = document(step(noon9, "5"));
    EXPECT_EQ(read(first + document(step(noon10, "7")).substr(39)),
              (Reading{ninth, XMLError{first.size(), XMLErrorReason::junkAfterRoot}}));
}

TEST(BadInput, junkAfterTheRootIsAnError) {
    const std::string whole = around("");
    EXPECT_EQ(read(whole + "junk"),
              (Reading{both, XMLError{whole.size(), XMLErrorReason::junkAfterRoot}}));
    EXPECT_EQ(read(whole + "<?i?>\njunk=\"\""),
              (Reading{both, XMLError{whole.size() + 6, XMLErrorReason::junkAfterRoot}}));
    EXPECT_EQ(read(whole + "<!-- a -- b -->"),
              (Reading{both, XMLError{whole.size() + 9, XMLErrorReason::invalidToken}}));
    EXPECT_EQ(read(whole + "<!-- a comment -->\n<?and an instruction?>\n"), (Reading{both, {}}));
}

TEST(BadInput, anyTextAfterTheRootIsAnErrorAtTheFirstByteOfTheText) {
    const std::string whole = around("");
    for (const char* text : {"]",
                             "]]",
                             "]]>",
                             "j]]",
                             "\xC3",
                             "j\xC3",
                             "junk\xE2\x82",
                             "junk\xF0\x9F\x91",
                             "]]\xC3",
                             "j=",
                             "&",
                             "&a",
                             "%",
                             "%a;",
                             "\"",
                             "'j",
                             "[",
                             ">",
                             "j\xFF",
                             "\x80",
                             "\xEF\xBF\xBE",
                             "\v"}) {
        for (const char* before : {"", "\n", "\r", "<!-- a -->", "<?a?> "}) {
            const std::uint64_t stop = whole.size() + std::string_view(before).size();
            EXPECT_EQ(read(whole + before + text),
                      (Reading{both, XMLError{stop, XMLErrorReason::junkAfterRoot}}))
                << before << text;
        }
    }
}

TEST(BadInput, utf16TextAfterTheRootIsAnErrorAtItsFirstByte) {
    for (const bool bigEndian : {true, false}) {
        const auto encoded = [bigEndian](std::u16string_view text) {
            std::string bytes;
            for (const char16_t unit : text) {
                const char high = static_cast<char>(unit >> 8);
                const char low = static_cast<char>(unit & 0xFF);
                bytes += bigEndian ? std::string{high, low} : std::string{low, high};
            }
            return bytes;
        };
        const std::string whole = encoded(u"<HealthData></HealthData>");
        // In some of these letters, the first or second byte is that of "<".
        for (const char16_t* text : {u"]]", u"j]]", u"j=", u"&", u"\u3C4E", u"\u4E3C", u"\u3C4E=",
                                     u"\u4E3C=", u"\u4E3C]]", u"j\uFFFE"}) {
            for (const std::string rest : {"", "x"}) {  // "x" is half of a character
                EXPECT_EQ(read(whole + encoded(text) + rest),
                          (Reading{{}, XMLError{whole.size(), XMLErrorReason::junkAfterRoot}}))
                    << bigEndian << encoded(text) << rest;
            }
        }
        EXPECT_EQ(read(whole + encoded(u"<!-- a -- b -->")),
                  (Reading{{}, XMLError{whole.size() + 18, XMLErrorReason::invalidToken}}));
    }
}

TEST(BadInput, aDuplicateAttributeIsAnError) {
    const std::string tag = '<' + stepAttributes(noon9, "100") + " value=\"100\"/>";
    expectStopIn(tag, tag.rfind("value"), XMLErrorReason::duplicateAttribute);
}

TEST(BadInput, anAttributeWithoutQuotesIsAnError) {
    expectStopIn("<Record value=5/>", 14, XMLErrorReason::invalidToken);
}

TEST(BadInput, anAttributeWithoutAValueIsAnError) {
    expectStopIn("<Record value/>", 13, XMLErrorReason::invalidToken);
}

TEST(BadInput, aLessThanSignInAValueIsAnError) {
    expectStopIn("<Record device=\"<<HKDevice>\"/>", 16, XMLErrorReason::invalidToken);
}

TEST(BadInput, aBareAmpersandInAValueIsAnError) {
    expectStopIn("<Record device=\"A & B\"/>", 19, XMLErrorReason::invalidToken);
}

TEST(BadInput, anUndeclaredEntityIsAnError) {
    expectStopIn("&nbsp;", 0, XMLErrorReason::undefinedEntity);
    expectStopIn("<Record device=\"A&nbsp;B\"/>", 0,
                 XMLErrorReason::undefinedEntity);  // reported at the start of the tag
}

TEST(BadInput, aVerticalTabIsAnError) {
    expectStopIn("<MetadataEntry value=\"a\vb\"/>", 23, XMLErrorReason::invalidToken);
    expectStopIn("<Note>a\vb</Note>", 7, XMLErrorReason::invalidToken);
}

TEST(BadInput, aReferenceToAVerticalTabIsAnError) {
    expectStopIn("<MetadataEntry value=\"a&#11;b\"/>", 23,
                 XMLErrorReason::invalidCharacterReference);
    expectStopIn("<Note>a&#xB;b</Note>", 7, XMLErrorReason::invalidCharacterReference);
}

TEST(BadInput, aNullCharacterIsAnError) {
    expectStopIn("<Note>a\0b</Note>"s, 7, XMLErrorReason::invalidToken);
    expectStopIn("<MetadataEntry value=\"a\0b\"/>"s, 23, XMLErrorReason::invalidToken);
    expectStopIn("<Note>a&#0;b</Note>", 7, XMLErrorReason::invalidCharacterReference);
}

TEST(BadInput, aNoncharacterIsAnError) {
    expectStopIn("<Note>a\uFFFEb</Note>", 7, XMLErrorReason::invalidToken);
    expectStopIn("<Note>a\uFFFFb</Note>", 7, XMLErrorReason::invalidToken);
    expectStopIn("<Note>a&#xFFFE;b</Note>", 7, XMLErrorReason::invalidCharacterReference);
}

TEST(BadInput, invalidUtf8IsAnError) {
    for (const char* bytes : {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xFE", "\xFF",
                              "\xF5\x80\x80\x80", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xC3("}) {
        expectStopIn("<Note>a" + std::string(bytes) + "b</Note>", 7, XMLErrorReason::invalidToken);
    }
}

TEST(BadInput, aLoneSurrogateIsAnError) {
    expectStopIn("<Note>a\xED\xA0\x80"s + "b</Note>", 7, XMLErrorReason::invalidToken);
    expectStopIn("<Note>a&#xD800;b</Note>", 7, XMLErrorReason::invalidCharacterReference);
}

TEST(BadInput, twoHyphensInsideACommentAreAnError) {
    expectStopIn("<!-- a -- b -->", 9, XMLErrorReason::invalidToken);
}

TEST(BadInput, twoClosingBracketsAndAGreaterThanSignInTextAreAnError) {
    expectStopIn("<Note>a]]>b</Note>", 9, XMLErrorReason::invalidToken);
    expectBothDays(around("<Note>a]]b</Note><Note>a]>b</Note>"));
}

TEST(BadInput, recordsInCommentsCdataSectionsAndInstructionsDoNotCount) {
    const std::string record = step(noon9, "100");
    expectBothDays(around("<!--" + record + "-->"));
    expectBothDays(around("<![CDATA[" + record + "]]>"));
    expectBothDays(around("<?note " + record + "?>"));
}

TEST(BadInput, aRecordCountsAtADepthOfThreeHundredElements) {
    std::string deep;
    std::string back;
    for (int level = 0; level < 300; ++level) {
        deep += "<Level>";
        back += "</Level>";
    }
    expectBothDays(document(deep + step(noon9, "5") + step(noon10, "7") + back));
    const std::string unclosed = document(deep + step(noon9, "5"));
    EXPECT_EQ(read(unclosed), (Reading{ninth, XMLError{byteOf(unclosed, "</HealthData>", 2),
                                                       XMLErrorReason::mismatchedTag}}));
}

TEST(BadInput, theLeadingWholeNumberOfAValueCounts) {
    for (const auto& [value, steps] : {std::pair<const char*, std::int64_t>("", 0),
                                       {"abc", 0},
                                       {"1.9", 1},
                                       {"-5", -5},
                                       {" 7 ", 7},
                                       {"&#9;7", 7},
                                       {"9223372036854775808", INT64_MAX},
                                       {"-99999999999999999999", INT64_MIN}}) {
        EXPECT_EQ(read(document(step(noon9, value))), (Reading{{{"2024-03-09", steps}}, {}}))
            << value;
    }
}

}  // namespace

}  // namespace ambulet
