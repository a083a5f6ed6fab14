#include "import/expat/Declarations.h"

#include <cstring>
#include <strings.h>

namespace ambulet {

namespace {

bool refersToEntities(std::string_view value, bool isParameter) {
    // "&#" starts a reference to a character, not to an entity.
    for (std::size_t at = value.find('&'); at != std::string_view::npos;
         at = value.find('&', at + 1)) {
        if (at + 1 < value.size() && value[at + 1] != '#') {
            return true;
        }
    }
    return isParameter && value.find('%') != std::string_view::npos;
}

}  // namespace

void Declarations::watch(XML_Parser parser) {
    _parser = parser;
    XML_SetUserData(parser, this);
    XML_SetXmlDeclHandler(parser, [](void* data, const XML_Char* version, const XML_Char* encoding,
                                     int /*standalone*/) {
        static_cast<Declarations*>(data)->_arePlain &=
            version != nullptr && std::strcmp(version, "1.0") == 0 &&
            (encoding == nullptr || strcasecmp(encoding, "UTF-8") == 0);
    });
    XML_SetDoctypeDeclHandler(
        parser,
        [](void* data, const XML_Char* /*name*/, const XML_Char* systemId, const XML_Char* publicId,
           int /*hasInternalSubset*/) {
            static_cast<Declarations*>(data)->_arePlain &=
                systemId == nullptr && publicId == nullptr;
        },
        [](void* data) { static_cast<Declarations*>(data)->_haveEnded = true; });
    XML_SetEntityDeclHandler(parser, [](void* data, const XML_Char* /*name*/, int isParameter,
                                        const XML_Char* value, int length, const XML_Char* /*base*/,
                                        const XML_Char* /*systemId*/, const XML_Char* /*publicId*/,
                                        const XML_Char* /*notation*/) {
        const std::size_t size = value == nullptr ? 0 : static_cast<std::size_t>(length);
        static_cast<Declarations*>(data)->addEntity({value, size}, isParameter != 0);
    });
    XML_SetAttlistDeclHandler(parser, [](void* data, const XML_Char* /*element*/,
                                         const XML_Char* /*attribute*/, const XML_Char* type,
                                         const XML_Char* value, int /*isRequired*/) {
        static_cast<Declarations*>(data)->_arePlain &=
            value == nullptr && std::strcmp(type, "CDATA") == 0;
    });
    // Called for a reference to an undeclared parameter entity. Expat ignores the declarations
    // after such a reference.
    XML_SetSkippedEntityHandler(parser,
                                [](void* data, const XML_Char* /*name*/, int /*isParameter*/) {
                                    static_cast<Declarations*>(data)->_arePlain = false;
                                });
}

void Declarations::addEntity(std::string_view value, bool isParameter) {
    _arePlain = false;
    if (refersToEntities(value, isParameter)) {
        ++_nestingEntities;
    }
    if (nestTooDeeply()) {
        XML_StopParser(_parser, XML_FALSE);
    }
}

}  // namespace ambulet
