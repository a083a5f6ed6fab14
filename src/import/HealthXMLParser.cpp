#include "import/HealthXMLParser.h"

#include "import/steps/StepRecord.h"
#include "import/xml/InputFile.h"

#include <system_error>

namespace ambulet {

std::vector<DailySteps> HealthXMLParser::parseURL(const std::filesystem::path& path) {
    std::error_code ignored;
    if (const auto file = InputFile::open(path, ignored)) {
        // Deliberate: an error is ignored, and the records before it count.
        parse(*file, {.threads = ExportReader::usualThreads()});
    }
    return days();
}

std::optional<XMLError> HealthXMLParser::parse(const InputFile& file,
                                               ExportReader::Options options) {
    return ExportReader(options).read(file, *this, _sums);
}

void HealthXMLParser::didStartElement(std::string_view name, const XMLAttributes& attributes) {
    StepRecord::add(_sums, name, attributes);
}

}  // namespace ambulet
