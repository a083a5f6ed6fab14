#include "import/xml/XMLError.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

namespace ambulet {

namespace {

TEST(XMLError, everyReasonHasItsOwnText) {
    std::set<std::string> texts;
    int count = 0;
    for (int value = static_cast<int>(XMLErrorReason::noElement);
         value <= static_cast<int>(XMLErrorReason::unexpected); ++value) {
        texts.insert(make_error_code(static_cast<XMLErrorReason>(value)).message());
        ++count;
    }
    EXPECT_EQ(texts.size(), static_cast<std::size_t>(count));
}

TEST(XMLError, theTextsAreShortDescriptionsInEnglish) {
    for (const auto& [reason, text] :
         {std::pair(XMLErrorReason::noElement, "no element found"),
          {XMLErrorReason::syntax, "syntax error"},
          {XMLErrorReason::invalidToken, "not well-formed (invalid token)"},
          {XMLErrorReason::unclosedToken, "unclosed token"},
          {XMLErrorReason::mismatchedTag, "mismatched tag"},
          {XMLErrorReason::duplicateAttribute, "duplicate attribute"},
          {XMLErrorReason::junkAfterRoot, "junk after document element"},
          {XMLErrorReason::malformedDeclaration, "XML declaration not well-formed"},
          {XMLErrorReason::unknownEncoding, "unknown encoding"},
          {XMLErrorReason::wrongEncoding, "encoding specified in XML declaration is incorrect"},
          {XMLErrorReason::invalidCharacterReference, "reference to invalid character number"},
          {XMLErrorReason::undefinedEntity, "undefined entity"},
          {XMLErrorReason::entityAmplification,
           "limit on input amplification factor (from DTD and entities) breached"},
          {XMLErrorReason::tokenTooLong, "token too long"},
          {XMLErrorReason::outOfMemory, "out of memory"}}) {
        EXPECT_EQ(make_error_code(reason).message(), text);
    }
}

TEST(XMLError, aSystemErrorIsNotAnXMLErrorReason) {
    const XMLError error{7, std::make_error_code(std::errc::io_error)};
    EXPECT_NE(error, (XMLError{7, static_cast<XMLErrorReason>(EIO)}));
    EXPECT_EQ(error, (XMLError{7, std::make_error_code(std::errc::io_error)}));
    EXPECT_NE(error, (XMLError{8, std::make_error_code(std::errc::io_error)}));
}

}  // namespace

}  // namespace ambulet
