#include "import/SampleExports.h"

#include "import/Reading.h"

#include <algorithm>

namespace ambulet {

namespace {

using namespace std::string_literals;

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

/// Records with the same attributes. There are so many records that the fast reader has cached all
/// markup between their values before it reads the last one.
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

/// Records with their attributes in different orders.
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

}  // namespace ambulet
