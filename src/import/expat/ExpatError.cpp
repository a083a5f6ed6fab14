#include "import/expat/ExpatError.h"

namespace ambulet {

XMLErrorReason errorReason(XML_Error error) {
    switch (error) {
    case XML_ERROR_NO_ELEMENTS:
        return XMLErrorReason::noElement;
    case XML_ERROR_SYNTAX:
        return XMLErrorReason::syntax;
    case XML_ERROR_INVALID_TOKEN:
        return XMLErrorReason::invalidToken;
    case XML_ERROR_UNCLOSED_TOKEN:
        return XMLErrorReason::unclosedToken;
    case XML_ERROR_PARTIAL_CHAR:
        return XMLErrorReason::partialCharacter;
    case XML_ERROR_UNCLOSED_CDATA_SECTION:
        return XMLErrorReason::unclosedCdata;
    case XML_ERROR_TAG_MISMATCH:
        return XMLErrorReason::mismatchedTag;
    case XML_ERROR_DUPLICATE_ATTRIBUTE:
        return XMLErrorReason::duplicateAttribute;
    case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
        return XMLErrorReason::junkAfterRoot;
    case XML_ERROR_MISPLACED_XML_PI:
        return XMLErrorReason::misplacedDeclaration;
    case XML_ERROR_XML_DECL:
        return XMLErrorReason::malformedDeclaration;
    case XML_ERROR_PUBLICID:
        return XMLErrorReason::malformedPublicId;
    case XML_ERROR_UNKNOWN_ENCODING:
        return XMLErrorReason::unknownEncoding;
    case XML_ERROR_INCORRECT_ENCODING:
        return XMLErrorReason::wrongEncoding;
    case XML_ERROR_BAD_CHAR_REF:
        return XMLErrorReason::invalidCharacterReference;
    case XML_ERROR_UNDEFINED_ENTITY:
        return XMLErrorReason::undefinedEntity;
    case XML_ERROR_RECURSIVE_ENTITY_REF:
        return XMLErrorReason::recursiveEntity;
    case XML_ERROR_ASYNC_ENTITY:
        return XMLErrorReason::unbalancedEntity;
    case XML_ERROR_BINARY_ENTITY_REF:
        return XMLErrorReason::binaryEntityReference;
    case XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF:
        return XMLErrorReason::externalEntityInAttribute;
    case XML_ERROR_PARAM_ENTITY_REF:
        return XMLErrorReason::misplacedParameterEntity;
    case XML_ERROR_INCOMPLETE_PE:
        return XMLErrorReason::unbalancedParameterEntity;
    case XML_ERROR_ENTITY_DECLARED_IN_PE:
        return XMLErrorReason::entityDeclaredInParameterEntity;
    case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
        return XMLErrorReason::entityAmplification;
    case XML_ERROR_NO_MEMORY:
        return XMLErrorReason::outOfMemory;
    default:
        // The others are about namespaces, external entities, functions that are not called, and
        // XML_StopParser, whose callers know the reason.
        return XMLErrorReason::unexpected;
    }
}

}  // namespace ambulet
