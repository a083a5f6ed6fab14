// The fast road and expat come to the same on everything. fuzz/ReadersFuzz.cpp looks further.

#include "import/ExportReader.h"

#include "import/Comparison.h"
#include "import/Mutants.h"
#include "import/Mutations.h"
#include "import/Reading.h"
#include "import/SampleExports.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>
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

TEST(ExportReader, comesToTheSameAsExpatOnSampleExports) {
    for (const std::string& sample : sampleExports()) {
        EXPECT_EQ(readAllWays(sample).error, std::nullopt) << sample;
    }
}

TEST(ExportReader, comesToTheSameAsExpatOnSpoiltExports) {
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
    // Or it would not be a test.
    EXPECT_GT(wellFormed, 60);
    EXPECT_GT(days, 500);
}

// Of all sizes but the largest, in other encodings, with other prologs, and with much at the edges
// of blocks. fuzz/CompareMutants.cpp reads as many as one likes.
TEST(ExportReader, comesToTheSameAsExpatOnMutants) {
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

}  // namespace

}  // namespace ambulet
