#include "import/xml/XMLError.h"

#include <string>

namespace ambulet {

namespace {

const char* text(XMLErrorReason reason) {
    switch (reason) {
    case XMLErrorReason::noElement:
        return "no element found";
    case XMLErrorReason::syntax:
        return "syntax error";
    case XMLErrorReason::invalidToken:
        return "not well-formed (invalid token)";
    case XMLErrorReason::unclosedToken:
        return "unclosed token";
    case XMLErrorReason::partialCharacter:
        return "partial character";
    case XMLErrorReason::unclosedCdata:
        return "unclosed CDATA section";
    case XMLErrorReason::mismatchedTag:
        return "mismatched tag";
    case XMLErrorReason::duplicateAttribute:
        return "duplicate attribute";
    case XMLErrorReason::junkAfterRoot:
        return "junk after document element";
    case XMLErrorReason::misplacedDeclaration:
        return "XML or text declaration not at start of entity";
    case XMLErrorReason::malformedDeclaration:
        return "XML declaration not well-formed";
    case XMLErrorReason::malformedPublicId:
        return "illegal character(s) in public id";
    case XMLErrorReason::unknownEncoding:
        return "unknown encoding";
    case XMLErrorReason::wrongEncoding:
        return "encoding specified in XML declaration is incorrect";
    case XMLErrorReason::invalidCharacterReference:
        return "reference to invalid character number";
    case XMLErrorReason::undefinedEntity:
        return "undefined entity";
    case XMLErrorReason::recursiveEntity:
        return "recursive entity reference";
    case XMLErrorReason::unbalancedEntity:
        return "asynchronous entity";
    case XMLErrorReason::binaryEntityReference:
        return "reference to binary entity";
    case XMLErrorReason::externalEntityInAttribute:
        return "reference to external entity in attribute";
    case XMLErrorReason::misplacedParameterEntity:
        return "illegal parameter entity reference";
    case XMLErrorReason::unbalancedParameterEntity:
        return "incomplete markup in parameter entity";
    case XMLErrorReason::entityDeclaredInParameterEntity:
        return "entity declared in parameter entity";
    case XMLErrorReason::entityAmplification:
        return "limit on input amplification factor (from DTD and entities) breached";
    case XMLErrorReason::entityNesting:
        return "too many entities that refer to others";
    case XMLErrorReason::tokenTooLong:
        return "token too long";
    case XMLErrorReason::outOfMemory:
        return "out of memory";
    case XMLErrorReason::unexpected:
        break;
    }
    return "unexpected error of the XML library";
}

class Category : public std::error_category {
  public:
    const char* name() const noexcept override { return "xml"; }
    std::string message(int reason) const override {
        return text(static_cast<XMLErrorReason>(reason));
    }
};

}  // namespace

std::error_code make_error_code(XMLErrorReason reason) {
    static const Category category;
    return {static_cast<int>(reason), category};
}

}  // namespace ambulet
