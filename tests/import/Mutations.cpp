#include "import/Mutations.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

namespace ambulet {

namespace {

const char* const pieces[] = {"<",
                              ">",
                              "/>",
                              "</",
                              "\"",
                              "'",
                              "=",
                              "&",
                              ";",
                              "&amp;",
                              "&#49;",
                              "&#x0;",
                              "&#xD800;",
                              "&nbsp;",
                              "]]>",
                              "--",
                              "-->",
                              "<!--",
                              "<![CDATA[",
                              "?>",
                              "<?",
                              "<?xml ?>",
                              "\n",
                              "\r\n",
                              "\t",
                              "\v",
                              "\x7F",
                              "\x80",
                              "\xC3\xA4",
                              "\xEF\xBF\xBE",
                              "\xED\xA0\x80",
                              "\xF0\x9F\x91\x9F",
                              "<Record>",
                              "</Record>",
                              "</HealthData>",
                              "<HealthData>",
                              " type=\"HKQuantityTypeIdentifierStepCount\"",
                              " value='3'",
                              " startDate=\"2024-03-09 12:00:00 +0000\"",
                              "<a/>",
                              "<a>b</a>",
                              "<!DOCTYPE a>",
                              "<!ENTITY a 'b'>",
                              "<!ATTLIST Record value CDATA '9'>",
                              "%a;",
                              "\xEF\xBB\xBF",
                              "encoding='x'"};

const std::pair<const char*, const char*> wraps[] = {
    {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?a ", "?>"}, {"<Record>", "</Record>"}, {"'", "'"}};

}  // namespace

std::string mutated(std::string bytes, std::minstd_rand& chance) {
    const auto upTo = [&chance](std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(0, most)(chance);
    };
    // Half of the places are before or after a character of markup.
    const auto place = [&] {
        const std::size_t at = upTo(bytes.size());
        const std::size_t edge = bytes.find_first_of("<>\"='", at);
        return upTo(1) == 0 || edge == std::string::npos ? at : edge + upTo(1);
    };
    for (std::size_t times = upTo(2) + 1; times > 0; --times) {
        auto [begin, end] = std::minmax({place(), place()});
        if (upTo(3) > 0) {
            end = std::min(end, begin + upTo(200));
        }
        const std::string span = bytes.substr(begin, end - begin);
        switch (upTo(6)) {
        case 0:
            if (begin < bytes.size()) {
                bytes[begin] = static_cast<char>(upTo(255));
            }
            break;
        case 1:
            bytes.erase(begin, span.size());
            break;
        case 2:
            bytes.insert(end, span);
            break;
        case 3: {
            const auto& [before, after] = wraps[upTo(std::size(wraps) - 1)];
            bytes.replace(begin, span.size(), before + span + after);
            break;
        }
        case 4:
            bytes.erase(begin, span.size());
            bytes.insert(upTo(bytes.size()), span);
            break;
        case 5:
            bytes.resize(begin + upTo(bytes.size() - begin));
            break;
        default:
            bytes.insert(begin, pieces[upTo(std::size(pieces) - 1)]);
        }
    }
    return bytes;
}

}  // namespace ambulet
