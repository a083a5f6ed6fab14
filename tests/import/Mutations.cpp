#include "import/Mutations.h"

#include "import/Reading.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

namespace ambulet {

namespace {

using namespace std::string_literals;

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

std::string manyKinds() {
    std::string content;
    for (int hour = 10; hour < 16; ++hour) {
        const std::string start = "2024-03-0" + std::to_string(hour % 3 + 7) + " " +
                                  std::to_string(hour) + ":00:00 -0500";
        content +=
            " <Record type=\"HKQuantityTypeIdentifierStepCount\" sourceName=\"Zo\u00EB\u2019s "
            "Phone\" device=\"&lt;&lt;HKDevice: 0x28&gt;, name:Phone, model:Phone&gt;\" "
            "unit=\"count\" startDate=\"" +
            start + "\" endDate=\"" + start + "\" value=\"" + std::to_string(hour) + "\"/>\n";
        content +=
            " <Record type=\"HKQuantityTypeIdentifierHeartRateVariabilitySDNN\" value=\"61\">\n"
            "  <MetadataEntry key=\"a\" value=\"1\"/>\n"
            "  <HeartRateVariabilityMetadataList>\n"
            "   <InstantaneousBeatsPerMinute bpm=\"62\" time=\"7:01\"/>\n"
            "  </HeartRateVariabilityMetadataList>\n </Record>\n";
    }
    return document(content);
}

std::string oddities() {
    return "\uFEFF<?xml version='1.0'?>\n<!-- a -->\n<Export>\r\n"
           "<?note a?><!-- b - c --><![CDATA[<Record>]]>&#169;&lt;]]&gt; \u00E4\n"
           "<Record type='HKQuantityTypeIdentifierStepCount'\n\tstartDate = "
           "'2024-03-09 12:00:00 +0000'  value\t=\r\n'7' ></Record >\n"
           "<Record value='&#49;2' type='HKQuantityTypeIdentifierStepCoun&#116;' "
           "startDate='2024-03-09&#32;12:00:00 +00:00'/><Record/>\n"
           "<Correlation>\n<Record type=\"HKQuantityTypeIdentifierStepCount\" value=\"8\n\" "
           "startDate=\"2024-03-10\t12:00:00 +0000\"/>\n<a><b c=\"d\"></b></a>\n</Correlation>\n"
           "<Record startDate='2024-03-09 12:00:00 +0000' note='\"' type='x'/>\n"
           "<Record startDate='2024-03-09 12:00:00 +0000' note='\"' "
           "type='HKQuantityTypeIdentifierStepCount' value=\"it's 4\"/>\n"
           "</Export>\n<!-- e --><?f?>\n";
}

std::string withDoctype() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE HealthData [\n"
           "<!ELEMENT HealthData (Record*)>\n<!ATTLIST Record\n type CDATA #REQUIRED\n value CDATA "
           "#IMPLIED\n>\n]>\n<HealthData>\n" +
           step(noon9, "5") + step(noon10, "7") + step(noon10, "9") + "</HealthData>\n";
}

/// Records of one kind, so many that all that comes again in them has been seen before the last.
std::string regular() {
    std::string content;
    for (int number = 0; number < 24; ++number) {
        const bool isWatch = number % 3 == 0;
        content +=
            "<Record type=\"HKQuantityTypeIdentifierStepCount\" sourceName=\"" +
            (isWatch ? "Zo\u00EB\u2019s Watch"s : "Zo\u00EB\u2019s Phone"s) +
            "\" unit=\"count\" creationDate=\"" + std::to_string(number) + "\" startDate=\"" +
            noon9 + "\" value=\"" + std::to_string(number) + '"' +
            (number % 4 == 0 ? ">\n<MetadataEntry key=\"a\" value=\"1\"/>\n</Record>\n" : "/>\n");
    }
    return document(content);
}

/// The attributes of each record in another order.
std::string shuffled() {
    std::vector<std::string> attributes = {" type=\"HKQuantityTypeIdentifierStepCount\"",
                                           " unit=\"count\"", " startDate=\""s + noon9 + '"',
                                           " value=\"1\""};
    std::ranges::sort(attributes);
    std::string content;
    do {
        content += "<Record";
        for (const std::string& attribute : attributes) {
            content += attribute;
        }
        content += "/>\n";
    } while (std::ranges::next_permutation(attributes).found);
    return document(content);
}

std::string comments() {
    std::string content;
    for (int number = 0; number < 20; ++number) {
        content += "<!-- " + std::to_string(number) + " -->\n" + step(noon9, "5") + "<Note>of " +
                   std::to_string(number) + " \"steps\"</Note>\n";
    }
    return document(content);
}

}  // namespace

const std::vector<std::string>& sampleExports() {
    static const std::vector<std::string> samples = {manyKinds(), oddities(), withDoctype(),
                                                     comments(),  regular(),  shuffled()};
    return samples;
}

std::string mutated(std::string bytes, std::minstd_rand& chance) {
    const auto upTo = [&chance](std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(0, most)(chance);
    };
    // Half of the places are where markup begins or ends.
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
