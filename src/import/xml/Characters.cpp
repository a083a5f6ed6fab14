#include "import/xml/Characters.h"

#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <system_error>

namespace ambulet {

namespace {

bool isCharacter(std::uint32_t code) {
    return code == '\t' || code == '\n' || code == '\r' || (0x20 <= code && code < 0xD800) ||
           (0xE000 <= code && code < 0xFFFE) || (0x10000 <= code && code < 0x110000);
}

}  // namespace

std::size_t characterSize(const char* at) {
    std::int32_t size = 0;
    UChar32 code = 0;
    // NOLINTNEXTLINE(bugprone-inc-dec-in-conditions): ICU's macro does it
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(at), size, -1, code);
    return code >= 0 && isCharacter(static_cast<std::uint32_t>(code))
               ? static_cast<std::size_t>(size)
               : 0;
}

Reference reference(const char* at) {
    static constexpr struct {
        std::string_view text;
        std::uint32_t code;
    } predefined[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const auto& each : predefined) {
        if (std::equal(each.text.begin(), each.text.end(), at)) {
            return {each.text.size(), each.code};
        }
    }
    constexpr std::size_t mostBytes = 10;  // &#1114111;
    const char* const limit = at + ::strnlen(at, mostBytes);
    const char* const end = std::find(at, limit, ';');
    if (end == limit || at[1] != '#') {
        return {};
    }
    const bool isHexadecimal = at[2] == 'x';
    std::uint32_t code = 0;
    const auto read =
        std::from_chars(at + (isHexadecimal ? 3 : 2), end, code, isHexadecimal ? 16 : 10);
    const bool isWhole = read.ec == std::errc() && read.ptr == end;
    return isWhole && isCharacter(code) ? Reference{static_cast<std::size_t>(end - at) + 1, code}
                                        : Reference{};
}

std::string decodedValue(std::string_view value) {
    const std::string text(value);  // a null character ends it
    std::string result;
    for (const char* at = text.c_str(); *at != '\0';) {
        if (*at == '&') {
            const Reference character = reference(at);
            icu::UnicodeString(static_cast<UChar32>(character.code)).toUTF8String(result);
            at += character.size;
        } else if (isWhiteSpace(*at)) {
            at += at[0] == '\r' && at[1] == '\n' ? 2 : 1;
            result.push_back(' ');
        } else {
            result.push_back(*at++);
        }
    }
    return result;
}

}  // namespace ambulet
