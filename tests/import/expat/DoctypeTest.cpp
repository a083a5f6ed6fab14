#include "import/expat/Doctype.h"

#include "import/xml/InputFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace ambulet {

namespace {

using namespace std::string_literals;

// `text` with a "|" in place of its document type declaration; unchanged if none is found.
std::string without(const std::string& text) {
    const TemporaryFolder folder;
    std::error_code error;
    const auto file = InputFile::open(folder.write("file", text), error);
    const auto range = findDoctype(file.value());
    return range ? text.substr(0, range->begin) + '|' + text.substr(range->end) : text;
}

TEST(Doctype, endsAfterItsInternalSubset) {
    EXPECT_EQ(without("<?xml version='1.0'?>\n<!-- <!DOCTYPE --> <!DOCTYPE a [ junk ]> <a/>"),
              "<?xml version='1.0'?>\n<!-- <!DOCTYPE --> | <a/>");
    EXPECT_EQ(without("<!DOCTYPE a SYSTEM 'a' []\n><a/>"), "|<a/>");
    EXPECT_EQ(without("<!DOCTYPE[]><a/>"), "|<a/>");
}

TEST(Doctype, doesNotEndInsideQuotesCommentsOrInstructions) {
    EXPECT_EQ(without("<!DOCTYPE a [ ']>' \"]>'\" <!-- ]>' --> <? ]>\" ?> ]><a/>"), "|<a/>");
    EXPECT_EQ(without("<!DOCTYPE a [ <!-> ' <!-- ' ]>"), "|");
}

TEST(Doctype, endsBeforeTheRootsStartTagIfNoBracketEndsIt) {
    EXPECT_EQ(without("<!DOCTYPE a><a></a>"), "|<a></a>");
    EXPECT_EQ(without("<!DOCTYPE a [ <!ELEMENT b> <a/>"), "|<a/>");
    EXPECT_EQ(without("<!DOCTYPE><a/>"), "|<a/>");
    EXPECT_EQ(without("<!DOCTYPE a [ <ab> <a\n></a>]>"), "|<a\n></a>]>");
}

TEST(Doctype, anUnclosedQuoteDoesNotHideTheRoot) {
    EXPECT_EQ(without("<!DOCTYPE a [ don't ]><a b='c'>]></a>"), "|<a b='c'>]></a>");
}

TEST(Doctype, isNotFoundInAPrologWithoutOne) {
    for (const char* text : {"", " ", "<a/>", "text", "<!-- <!DOCTYPE a []>", "<?a <!DOCTYPE a []>",
                             "<a><!DOCTYPE a []></a>", "<!ELEMENT a><!DOCTYPE a []>", "<", "<!",
                             "<!DOCTYP", "junk <!DOCTYPE a []>"}) {
        EXPECT_EQ(without(text), text);
    }
}

TEST(Doctype, isNotFoundWithoutAnEnd) {
    for (const char* text : {"<!DOCTYPE", "<!DOCTYPE a", "<!DOCTYPE a [", "<!DOCTYPE a [ ] ",
                             "<!DOCTYPE a [ <!-- ]> <a>", "<!DOCTYPE a [ <? ]> <a>",
                             "<!DOCTYPE a [ ' ]> <b>", "<!DOCTYPE a [ <a", "<!DOCTYPE a [ <ab>"}) {
        EXPECT_EQ(without(text), text);
    }
}

TEST(Doctype, isFoundAcrossTheBlocksOfTheFile) {
    const std::string begin = "<!DOCTYPE a [";
    for (std::size_t length = 65'520; length < 65'540; ++length) {
        const std::string pad(length, ' ');
        ASSERT_EQ(without(begin + pad + "]><a/>"), "|<a/>") << length;
        ASSERT_EQ(without(begin + pad + "<a/>"), "|<a/>") << length;
        ASSERT_EQ(without(pad + begin + "]><a/>"), pad + "|<a/>") << length;
    }
}

TEST(Doctype, isFoundInUtf16) {
    const auto wide = [](std::string_view text, bool bigEndian) {
        std::string result;
        for (const char character : text) {
            result += bigEndian ? std::string{'\0', character} : std::string{character, '\0'};
        }
        return result;
    };
    for (const bool bigEndian : {true, false}) {
        const std::string mark = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
        for (const std::string& start : {mark, ""s}) {
            EXPECT_EQ(without(start + wide("<!DOCTYPE a [ ' <a/>", bigEndian)),
                      start + '|' + wide("<a/>", bigEndian));
            EXPECT_EQ(without(start + wide("<!DOCTYPE a [ ]><a/>", bigEndian)),
                      start + '|' + wide("<a/>", bigEndian));
        }
    }
}

}  // namespace

}  // namespace ambulet
