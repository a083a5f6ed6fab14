#include "Validity.h"

#include <gtest/gtest.h>

namespace makeexport {

namespace {

const std::string declarations = "<!DOCTYPE a [<!ELEMENT a (b)*><!ELEMENT b EMPTY>"
                                 "<!ATTLIST b x CDATA #REQUIRED y CDATA #IMPLIED>]>";

TEST(Validity, aValidDocumentHasNoViolations) {
    EXPECT_TRUE(violations(declarations + "<a><b x=''/><b x='' y=''/></a>").empty());
}

TEST(Validity, everyKindOfBreakIsFound) {
    const std::vector<std::string> expected = {"b has an undeclared z", "b has no x", "b in b",
                                               "c in a"};
    EXPECT_EQ(violations(declarations + "<a><c/><b z=''/><b x=''><b x=''/></b></a>"), expected);
    EXPECT_EQ(violations("<!DOCTYPE a [<!ATTLIST a i ID #IMPLIED>]><a/>"),
              std::vector<std::string>{"a i is ID"});
}

}  // namespace

}  // namespace makeexport
