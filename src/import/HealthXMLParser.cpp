#include "import/HealthXMLParser.h"

#include "import/ExportReader.h"
#include "import/steps/StepRecord.h"
#include "import/xml/InputFile.h"

#include <system_error>

namespace ambulet {

std::vector<DailySteps> HealthXMLParser::parseURL(const std::filesystem::path& path) {
    std::error_code ignored;
    if (const auto file = InputFile::open(path, ignored)) {
        // Whether it was well-formed is not looked at: what was read stands.
        ExportReader({.threads = ExportReader::usualThreads()}).read(*file, _sums);
    }
    return days();
}

void HealthXMLParser::didStartElement(std::string_view name, const XMLAttributes& attributes) {
    StepRecord::add(_sums, name, attributes);
}

}  // namespace ambulet
