// ExportReader and expat must give the same results for every file. fuzz/ReadersFuzz.cpp compares
// them on more inputs.

#include "import/ExportReader.h"

#include "import/Comparison.h"
#include "import/Mutants.h"
#include "import/Mutations.h"
#include "import/Reading.h"
#include "import/SampleExports.h"
#include "import/xml/InputFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <utility>

namespace ambulet {

namespace {

Reading readAllWays(std::string_view bytes) {
    const TemporaryFolder folder;
    std::string differences;
    Reading reading = readByAll(folder.write("export.xml", bytes), differences);
    EXPECT_EQ(differences, "") << bytes;
    return reading;
}

TEST(ExportReader, agreesWithExpatOnSampleExports) {
    for (const std::string& sample : sampleExports()) {
        EXPECT_EQ(readAllWays(sample).error, std::nullopt) << sample;
    }
}

TEST(ExportReader, agreesWithExpatOnDamagedExports) {
    std::minstd_rand chance(1);
    int wellFormed = 0;
    int days = 0;
    for (int round = 0; round < 1500 && !HasFailure(); ++round) {
        const auto& samples = sampleExports();
        const Reading reading =
            readAllWays(mutated(samples[static_cast<std::size_t>(round) % samples.size()], chance));
        wellFormed += reading.error ? 0 : 1;
        days += reading.days.empty() ? 0 : 1;
    }
    // Checks that enough of the documents are still well-formed, and that enough have days.
    EXPECT_GT(wellFormed, 60);
    EXPECT_GT(days, 500);
}

// Mutants of all sizes but the largest. fuzz/CompareMutants.cpp reads any number of mutants.
TEST(ExportReader, agreesWithExpatOnMutants) {
    const TemporaryFolder folder;
    for (const auto& [size, count] :
         {std::pair(MutantSize::small, 1500), {MutantSize::medium, 30}, {MutantSize::large, 3}}) {
        std::minstd_rand chance(1);
        for (int number = 0; number < count && !HasFailure(); ++number) {
            const std::string bytes = mutant(chance, size);
            const std::string differences = compareWays(folder.write("export.xml", bytes), chance);
            EXPECT_EQ(differences, "") << (bytes.size() < 10'000 ? bytes : "");
        }
    }
}

TEST(ExportReader, keepsTheEarlierSumsIfTheDelegateThrows) {
    struct Throwing : XMLReaderDelegate {
        void didStartElement(std::string_view, const XMLAttributes&) override {
            throw std::runtime_error("on purpose");
        }
    } delegate;
    const TemporaryFolder folder;
    std::error_code error;
    const auto file = InputFile::open(folder.write("export.xml", sampleExports().front()), error);
    StepSums sums;
    sums.add(noon9, "5");
    EXPECT_THROW(ExportReader({}).read(file.value(), delegate, sums), std::runtime_error);
    EXPECT_EQ(asText(sums.days()), (Days{{"2024-03-09", 5}}));
}

}  // namespace

}  // namespace ambulet
