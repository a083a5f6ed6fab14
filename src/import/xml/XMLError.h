#pragma once

#include <cstdint>
#include <system_error>

namespace ambulet {

/// The reasons why a document is not accepted. They can be stored in a std::error_code.
enum class XMLErrorReason {
    /// The document ends before the end of its root element, or has no root element.
    noElement = 1,

    /// Something is at a place where the grammar of XML does not allow it.
    syntax,

    /// A character is not allowed at its place, or bytes are not a character.
    invalidToken,

    /// The document ends inside a tag, a comment or other markup.
    unclosedToken,

    /// The document ends inside a character.
    partialCharacter,

    /// The document ends inside a CDATA section.
    unclosedCdata,

    /// The name of an end tag differs from that of its start tag.
    mismatchedTag,

    /// A tag has two attributes with the same name.
    duplicateAttribute,

    /// Something other than comments, processing instructions and white space follows the root.
    junkAfterRoot,

    /// An XML declaration is not at the start of the document.
    misplacedDeclaration,

    /// The XML declaration is not well-formed.
    malformedDeclaration,

    /// A public identifier has a character that is not allowed in it.
    malformedPublicId,

    /// The declared encoding is unknown.
    unknownEncoding,

    /// The declared encoding is not that of the document.
    wrongEncoding,

    /// A reference is to a character that XML does not allow.
    invalidCharacterReference,

    /// A reference is to an entity that is not declared.
    undefinedEntity,

    /// An entity refers to itself, directly or through others.
    recursiveEntity,

    /// An entity has the start of an element without its end, or the end without the start.
    unbalancedEntity,

    /// A reference is to an entity that is not XML.
    binaryEntityReference,

    /// The value of an attribute refers to an external entity.
    externalEntityInAttribute,

    /// A reference to a parameter entity is at a place where XML does not allow one.
    misplacedParameterEntity,

    /// A parameter entity has only a part of a declaration.
    unbalancedParameterEntity,

    /// A standalone document uses a general entity that was declared inside a parameter entity.
    entityDeclaredInParameterEntity,

    /// The entities expand to much more text than the document has.
    entityAmplification,

    /// So many entities refer to others that they may be nested too deeply.
    entityNesting,

    /// A tag, a comment, a processing instruction or a literal is longer than the limit.
    tokenTooLong,

    /// The reader would have to store more of the document than the limit allows.
    outOfMemory,

    /// The XML library reported an error that should not occur.
    unexpected,
};

/// An error code whose message is a short English text.
std::error_code make_error_code(XMLErrorReason reason);  // NOLINT(readability-identifier-naming)

/// The first error in a document, and its place.
struct XMLError {
    std::uint64_t byteOffset = 0;  // in the file

    /// An XMLErrorReason, or a system error if the file could not be read.
    std::error_code reason;

    friend bool operator==(const XMLError&, const XMLError&) = default;
};

}  // namespace ambulet

template <>
struct std::is_error_code_enum<ambulet::XMLErrorReason> : std::true_type {};
