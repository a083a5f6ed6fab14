#include "import/Reading.h"

#include "import/HealthXMLParser.h"
#include "import/xml/InputFile.h"
#include "support/TemporaryFolder.h"
#include "text/LocalTime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <sstream>
#include <stdexcept>

namespace ambulet {

namespace {

std::string dateText(std::chrono::year_month_day date) {
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

Reading readInBlocks(std::string_view bytes, std::initializer_list<std::size_t> blockSizes,
                     ExpatReader::Limits limits) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.write("export.xml", bytes);
    Reading usual = readFile(path, ExpatReader::defaultBlockSize, limits);
    for (const std::size_t blockSize : blockSizes) {
        EXPECT_EQ(readFile(path, blockSize, limits), usual) << "in blocks of " << blockSize;
    }
    if (limits == ExpatReader::Limits()) {
        std::string differences;
        readByAll(path, differences, *blockSizes.begin());
        EXPECT_EQ(differences, "");
    }
    return usual;
}

}  // namespace

Days asText(const std::vector<DailySteps>& days) {
    Days result;
    for (const DailySteps& day : days) {
        result.emplace_back(dateText(localDate(day.date().value())), day.steps());
    }
    return result;
}

std::ostream& operator<<(std::ostream& stream, const Reading& reading) {
    for (const auto& [date, steps] : reading.days) {
        stream << date << ": " << steps << ", ";
    }
    return reading.error ? stream << "stopped at " << reading.error->byteOffset << ": "
                                  << reading.error->reason.message()
                         : stream << "well-formed";
}

std::string stepAttributes(std::string_view startDate, std::string_view value) {
    return "Record type=\"HKQuantityTypeIdentifierStepCount\" sourceName=\"Phone\" startDate=\"" +
           std::string(startDate) + "\" value=\"" + std::string(value) + '"';
}

std::string step(std::string_view startDate, std::string_view value) {
    return '<' + stepAttributes(startDate, value) + "/>\n";
}

std::string document(std::string_view content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<HealthData locale=\"en_US\">\n" +
           std::string(content) + "</HealthData>\n";
}

std::string around(std::string_view part) {
    return document(step(noon9, "5") + std::string(part) + step(noon10, "7"));
}

std::uint64_t byteOf(std::string_view text, std::string_view part, std::uint64_t more) {
    const std::size_t at = text.find(part);
    if (at == std::string_view::npos) {
        throw std::logic_error("not in the text: " + std::string(part));
    }
    return at + more;
}

Reading readFile(const std::filesystem::path& path, std::size_t blockSize,
                 ExpatReader::Limits limits) {
    std::error_code error;
    const auto file = InputFile::open(path, error);
    EXPECT_TRUE(file) << error.message();
    HealthXMLParser parser;
    const auto stop = ExpatReader(blockSize, limits).read(file.value(), parser);
    return {asText(parser.days()), stop};
}

Reading readFast(const std::filesystem::path& path, ExportReader::Options options) {
    std::error_code error;
    const auto file = InputFile::open(path, error);
    EXPECT_TRUE(file) << error.message();
    HealthXMLParser parser;
    const auto stop = parser.parse(file.value(), options);
    return {asText(parser.days()), stop};
}

Reading readByAll(const std::filesystem::path& path, std::string& differences,
                  std::size_t smallestBlock) {
    // The smallest chunks start inside markup. The largest contain all of a small document.
    static constexpr ExportReader::Options ways[] = {
        {.threads = 1},
        {.threads = 1, .blockSize = 7},
        {.threads = 1, .blockSize = 100},
        {.threads = 2, .blockSize = 4096, .chunkSize = 50},
        {.threads = 3, .blockSize = 100, .chunkSize = 700},
        {.threads = 2, .chunkSize = std::size_t{32} * 1024},
        {.threads = 2},
    };
    Reading usual = readFile(path, ExpatReader::defaultBlockSize);
    std::ostringstream text;
    for (const ExportReader::Options& way : ways) {
        if (std::min(way.blockSize, way.chunkSize) < smallestBlock) {
            continue;
        }
        const Reading reading = readFast(path, way);
        if (reading != usual) {
            text << way.threads << " threads, blocks of " << way.blockSize << ", chunks of "
                 << way.chunkSize << ": " << reading << "\n";
        }
    }
    if (!text.str().empty()) {
        text << "expat: " << usual << "\n";
    }
    differences = text.str();
    return usual;
}

Reading read(std::string_view bytes, ExpatReader::Limits limits) {
    return readInBlocks(bytes, {1, 2, 7, 4096, bytes.size() + 1}, limits);
}

Reading readLarge(std::string_view bytes, ExpatReader::Limits limits) {
    return readInBlocks(bytes, {4096, bytes.size() + 1}, limits);
}

}  // namespace ambulet
