#pragma once

#include "import/ExportReader.h"
#include "import/steps/StepSums.h"
#include "import/xml/XMLReaderDelegate.h"
#include "model/DailySteps.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace ambulet {

class InputFile;

/// Computes the days of an export: the sums of its step records by the local calendar day on which
/// they start. A step record is an element named Record, at any depth, with the step count type, a
/// start date and a value. If two devices recorded the same steps, both records count.
///
/// One thread at a time. The sums stay in the parser, so use a new parser for each file.
class HealthXMLParser : public XMLReaderDelegate {
  public:
    /// Reads a file, on the calling thread and additional ones, and returns the days, newest first.
    /// Errors are not reported: a file that cannot be opened adds nothing, and from any other file
    /// the records before the first error are added.
    std::vector<DailySteps> parseURL(const std::filesystem::path& path);

    /// Adds the records of an open file to the sums. Returns the first error, as ExpatReader does.
    std::optional<XMLError> parse(const InputFile& file, ExportReader::Options options);

    /// Adds the tag to the sums if it is a step record.
    void didStartElement(std::string_view name, const XMLAttributes& attributes) override;

    /// The days read so far, newest first.
    std::vector<DailySteps> days() const { return _sums.days(); }

  private:
    StepSums _sums;
};

}  // namespace ambulet
