#include "import/xml/Characters.h"

#include <gtest/gtest.h>

namespace ambulet {

namespace {

TEST(Characters, aDecodedValueHasReferencesResolvedAndWhiteSpaceNormalised) {
    EXPECT_EQ(decodedValue("a&lt;&#228;&#x1F45F;&#10;b"), "a<\xC3\xA4\xF0\x9F\x91\x9F\nb");
    EXPECT_EQ(decodedValue("a\tb\nc\r\nd\re"), "a b c d e");
}

}  // namespace

}  // namespace ambulet
