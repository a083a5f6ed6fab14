#pragma once

#include "import/ExportReader.h"
#include "import/steps/StepSums.h"
#include "import/xml/XMLReader.h"
#include "model/DailySteps.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace ambulet {

class InputFile;

/// Turns an export of health records into days: of all elements named Record, wherever they stand,
/// those of the step count type are summed by the local calendar day on which they start. All of
/// them: nothing is taken out where two devices counted the same steps.
///
/// One thread at a time. The sums stay in the parser, so a parser is meant for one file.
class HealthXMLParser : public XMLReaderDelegate {
  public:
    /// Reads the whole file, on the calling thread and as many more as are useful, and returns the
    /// days read so far, newest first. Failure is not reported: a file that cannot be read adds no
    /// days, one that is not well-formed adds the records before the first error. A second call
    /// adds to the first's sums.
    std::vector<DailySteps> parseURL(const std::filesystem::path& path);

    /// The same for an open file. Returns nothing if the document is well-formed, else the first
    /// error.
    std::optional<XMLError> parse(const InputFile& file, ExportReader::Options options);

    /// Adds the record that the tag holds, if it holds one.
    void didStartElement(std::string_view name, const XMLAttributes& attributes) override;

    /// The days read so far, newest first.
    std::vector<DailySteps> days() const { return _sums.days(); }

  private:
    StepSums _sums;
};

}  // namespace ambulet
