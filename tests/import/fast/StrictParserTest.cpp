#include "import/fast/StrictParser.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace ambulet {

namespace {

constexpr bool accepted = true;
constexpr bool refused = false;

std::string padded(std::string_view text) {
    return std::string(text) + std::string(ByteScan::width, '\0');
}

/// Whether `text`, with a start tag after it, is accepted as content.
bool isContent(std::string_view text) {
    Names names;
    const std::string bytes = padded(std::string(text) + "<a b='");
    const char* const begin = bytes.data();
    const auto markup = StrictParser::inContent(names, begin, begin + text.size() + 6);
    return markup && markup->end == Markup::End::value && markup->size == text.size() + 6;
}

/// Whether `text` is accepted after the closing quote of a value, up to and including the next
/// opening quote.
bool isAfterValue(std::string_view text) {
    Names names;
    const std::string bytes = padded('"' + std::string(text));
    const char* const begin = bytes.data();
    const auto markup = StrictParser::afterValue(names, begin, begin + text.size() + 1);
    return markup && markup->end == Markup::End::value && markup->size == text.size() + 1;
}

/// Whether `text` is accepted as a value in double quotes.
bool isValue(std::string_view text) {
    const std::string bytes = padded(std::string(text) + '"');
    return StrictParser::valueEnd(bytes.data(), '"') == bytes.data() + text.size();
}

struct Case {
    const char* text;
    bool isAccepted;
};

TEST(StrictParser, contentIsTextReferencesTagsCommentsInstructionsAndCdataSections) {
    for (const auto& [text, isAccepted] : {
             Case{"", accepted},
             {"a > b \xC3\xA4\n", accepted},
             {"]] > ]>", accepted},
             {"]]>", refused},
             {"&lt;&gt;&amp;&quot;&apos;&#49;&#x31;", accepted},
             {"&nbsp;", refused},
             {"&#0;", refused},
             {"&", refused},
             {"<c/><d></d><e ></e >", accepted},
             {"<c / >", refused},
             {"< c/>", refused},
             {"<c></d>", refused},
             {"<!-- - a -->", accepted},
             {"<!-- -- -->", refused},
             {"<!--->", refused},
             {"<?a b?>", accepted},
             {"<?a?>", accepted},
             {"<?xml a?>", refused},
             {"<?XmL a?>", refused},
             {"<?a\xC3\xA4?>", refused},
             {"<![CDATA[<&]]]]>", accepted},
             {"<![CDATA[", refused},
             {"<!DOCTYPE c>", refused},
             {"\x01", refused},
             {"<c\xC3\xA4/>", refused},
         }) {
        EXPECT_EQ(isContent(text), isAccepted) << text;
    }
}

TEST(StrictParser, attributesNeedBlanksBeforeThemAndQuotesAroundTheirValues) {
    for (const auto& [text, isAccepted] : {
             Case{" b=\"", accepted},
             {"\n\tb = '", accepted},
             {"b=\"", refused},
             {" b\"", refused},
             {" b=c", refused},
             {" 1b=\"", refused},
             {" b\xC3\xA4=\"", refused},
             {"/>\n<c d=\"", accepted},
             {"></x><c d=\"", accepted},
             {" /><c d=\"", accepted},
             {"/ ><c d=\"", refused},
             {"><c/d=\"", refused},
             {"><c d=\"", accepted},
         }) {
        EXPECT_EQ(isAfterValue(text), isAccepted) << text;
    }
}

TEST(StrictParser, aValueHasNoLessThanAndOnlyReferencesToCharactersAndPredefinedEntities) {
    for (const auto& [text, isAccepted] : {
             Case{"", accepted},
             {"a>b'c\n\t", accepted},
             {"a<b", refused},
             {"&#9;&amp;", accepted},
             {"&b;", refused},
             {"&#xD800;", refused},
             {"&#xFFFE;", refused},
             {"&#x10FFFF;", accepted},
             {"&#x110000;", refused},
             {"&#4294967345;", refused},
             {"&#-1;", refused},
             {"&#;", refused},
             {"&#x;", refused},
         }) {
        EXPECT_EQ(isValue(text), isAccepted) << text;
    }
}

TEST(StrictParser, charactersAreThoseOfXMLInTheShortestUTF8) {
    for (const auto& [text, isAccepted] : {
             Case{"\x7F", accepted},
             {"\xC2\x80", accepted},
             {"\xC1\xBF", refused},           // U+007F in two bytes
             {"\x80", refused},               // starts in the middle of a character
             {"\xC3", refused},               // incomplete
             {"\xE0\xA0\x80", accepted},      // U+0800
             {"\xE0\x9F\xBF", refused},       // U+07FF in three bytes
             {"\xED\x9F\xBF", accepted},      // U+D7FF
             {"\xED\xA0\x80", refused},       // a surrogate
             {"\xEE\x80\x80", accepted},      // U+E000
             {"\xEF\xBF\xBD", accepted},      // U+FFFD
             {"\xEF\xBF\xBE", refused},       // U+FFFE
             {"\xEF\xBF\xBF", refused},       // U+FFFF
             {"\xF0\x90\x80\x80", accepted},  // U+10000
             {"\xF0\x8F\xBF\xBF", refused},   // U+FFFF in four bytes
             {"\xF4\x8F\xBF\xBF", accepted},  // U+10FFFF
             {"\xF4\x90\x80\x80", refused},   // U+110000
             {"\xF5\x80\x80\x80", refused},
         }) {
        EXPECT_EQ(isValue(text), isAccepted) << testing::PrintToString(text);
    }
}

TEST(StrictParser, markupReportsTheElementsThatItClosesAndOpens) {
    Names names;
    const std::string bytes = padded("\">\n</a>\n</b><c><d/></c>\n<e>\n<f g=\"");
    const auto markup = StrictParser::afterValue(names, bytes.data(), bytes.data() + bytes.size());
    ASSERT_TRUE(markup);
    const auto namesOf = [&](auto ids) {
        std::string text;
        for (const NameTable::Id id : ids) {
            text += names.elements.name(id);
        }
        return text;
    };
    EXPECT_TRUE(markup->endsTag);
    EXPECT_FALSE(markup->isEmptyElement);
    EXPECT_EQ(namesOf(markup->closed()), "ab");
    EXPECT_EQ(namesOf(markup->opened()), "e");
    EXPECT_TRUE(markup->beginsTag);
    EXPECT_EQ(names.elements.name(markup->element), "f");
    EXPECT_EQ(names.attributes.name(markup->attribute), "g");
    EXPECT_EQ(bytes.substr(markup->tagOffset, 2), "<f");
}

}  // namespace

}  // namespace ambulet
