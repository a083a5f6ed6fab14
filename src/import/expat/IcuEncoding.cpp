#include "import/expat/IcuEncoding.h"

#include <unicode/ucnv.h>

#include <memory>

namespace ambulet {

namespace {

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter openConverter(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &status), ucnv_close);
    // Invalid bytes are an error, and do not become replacement characters.
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    return U_SUCCESS(status) ? std::move(converter) : Converter(nullptr, ucnv_close);
}

constexpr int noCharacter = -1;
constexpr int firstOfTwo = -2;

/// The character of the bytes; `firstOfTwo` if they are only the start of one, `noCharacter` if
/// they are not a single character.
int character(UConverter* converter, const char* bytes, int count) {
    UErrorCode status = U_ZERO_ERROR;
    const char* end = bytes + count;
    ucnv_reset(converter);
    const UChar32 result = ucnv_getNextUChar(converter, &bytes, end, &status);
    if (status == U_TRUNCATED_CHAR_FOUND) {
        return firstOfTwo;
    }
    return U_SUCCESS(status) && bytes == end ? result : noCharacter;
}

int convertTwoBytes(void* converter, const char* bytes) {
    const int result = character(static_cast<UConverter*>(converter), bytes, 2);
    return result < 0 ? noCharacter : result;
}

void closeConverter(void* converter) {
    ucnv_close(static_cast<UConverter*>(converter));
}

}  // namespace

int useIcuEncoding(void* /*unused*/, const XML_Char* name, XML_Encoding* encoding) {
    Converter converter = openConverter(name);
    if (converter == nullptr) {
        return XML_STATUS_ERROR;
    }
    for (int byte = 0; byte < 256; ++byte) {
        const char bytes[] = {static_cast<char>(byte)};
        encoding->map[byte] = character(converter.get(), bytes, 1);
    }
    encoding->convert = convertTwoBytes;
    encoding->release = closeConverter;
    encoding->data = converter.release();
    return XML_STATUS_OK;
}

}  // namespace ambulet
