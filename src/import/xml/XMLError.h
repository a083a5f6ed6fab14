#pragma once

#include <cstdint>
#include <system_error>

namespace ambulet {

/// Why the reading of a document stopped. A std::error_code can hold each of them.
enum class XMLErrorReason {
    /// The document ends before its root element does, or has none.
    noElement = 1,

    /// Something stands where the grammar of a document or of its prolog does not allow it.
    syntax,

    /// A character that may not stand there, or bytes that are no character.
    invalidToken,

    /// The document ends within a tag, a comment or other markup.
    unclosedToken,

    /// The document ends within a character.
    partialCharacter,

    /// The document ends within a CDATA section.
    unclosedCdata,

    /// An end tag has another name than the start tag that it should close.
    mismatchedTag,

    /// A tag has two attributes of one name.
    duplicateAttribute,

    /// Something other than comments, instructions and white space follows the root element.
    junkAfterRoot,

    /// An XML declaration stands elsewhere than at the beginning.
    misplacedDeclaration,

    /// The XML declaration is not well-formed.
    malformedDeclaration,

    /// A public identifier has a character that it may not have.
    malformedPublicId,

    /// The document names an encoding that the reader lacks.
    unknownEncoding,

    /// The document names another encoding than the one it is in.
    wrongEncoding,

    /// A reference to a character that a document may not have.
    invalidCharacterReference,

    /// A reference to an entity that is not declared.
    undefinedEntity,

    /// An entity that refers to itself, directly or through others.
    recursiveEntity,

    /// An entity holds the beginning of an element and not its end, or the other way round.
    unbalancedEntity,

    /// A reference to an entity that is not XML.
    binaryEntityReference,

    /// A reference to an external entity in an attribute's value.
    externalEntityInAttribute,

    /// A parameter entity stands where it may not.
    misplacedParameterEntity,

    /// A parameter entity holds a part of a declaration only.
    unbalancedParameterEntity,

    /// A general entity was declared within a parameter entity and used where that does not count.
    entityDeclaredInParameterEntity,

    /// The entities expand to far more text than the document has.
    entityAmplification,

    /// So many entities refer to others that they could be nested too deeply to be read.
    entityNesting,

    /// A tag, a comment, an instruction or a literal of a declaration is longer than the limit.
    tokenTooLong,

    /// What the reader has to keep of the document is more than the limit.
    outOfMemory,

    /// The XML library failed in a way in which it should not.
    unexpected,
};

/// `reason`'s message is a text in English, a few words.
std::error_code make_error_code(XMLErrorReason reason);  // NOLINT(readability-identifier-naming)

/// Where and why reading stopped.
struct XMLError {
    std::uint64_t byteOffset = 0;  // in the file

    /// An XMLErrorReason; or an error of the system where the file could not be read.
    std::error_code reason;

    friend bool operator==(const XMLError&, const XMLError&) = default;
};

}  // namespace ambulet

template <>
struct std::is_error_code_enum<ambulet::XMLErrorReason> : std::true_type {};
