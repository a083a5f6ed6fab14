// Tests of the program: standard output, standard error, and exit status.

#include "support/Environment.h"
#include "support/StepRecord.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>

namespace ambulet {

namespace {

std::string content(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

struct Outcome {
    int status;
    std::string output;
    std::string errors;

    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
        return stream << outcome.status << '\n' << outcome.output << outcome.errors;
    }
};

// A shell parses `arguments`.
Outcome stepdays(const std::string& arguments) {
    const TemporaryFolder folder;
    const std::string output = folder.path() / "output";
    const std::string errors = folder.path() / "errors";
    const int status =
        std::system((STEPDAYS " " + arguments + " > " + output + " 2> " + errors).c_str());
    return {WEXITSTATUS(status), content(output), content(errors)};
}

const std::string threeRecords = "<HealthData>" + stepRecord("2024-03-09 23:30:00 +0000", "10") +
                                 stepRecord("2024-03-10 01:00:00 +0000", "-300") +
                                 stepRecord("2024-03-09 08:00:00 +0000", "7");

TEST(Stepdays, printsOneLineForEachDayNewestFirst) {
    const TemporaryFolder folder;
    const auto file = folder.write("export.xml", threeRecords + "</HealthData>");
    EXPECT_EQ(stepdays(file), (Outcome{0, "2024-03-10\t-300\n2024-03-09\t17\n", "well-formed\n"}));
}

TEST(Stepdays, daysAreThoseOfTheTimeZoneInTZ) {
    const TemporaryFolder folder;
    const auto file = folder.write("export.xml", threeRecords + "</HealthData>");
    for (const auto& [zone, output] :
         {std::pair("Asia/Tokyo", "2024-03-10\t-290\n2024-03-09\t7\n"),
          std::pair("America/Los_Angeles", "2024-03-09\t-283\n"),
          std::pair("Europe/Berlin", "2024-03-10\t-290\n2024-03-09\t7\n"),
          std::pair("Pacific/Kiritimati", "2024-03-10\t-290\n2024-03-09\t7\n"),
          std::pair("Pacific/Pago_Pago", "2024-03-09\t-290\n2024-03-08\t7\n")}) {
        const ScopedTimeZone local(zone);
        EXPECT_EQ(stepdays(file), (Outcome{0, output, "well-formed\n"})) << zone;
    }
}

TEST(Stepdays, reportsAnErrorWithItsPlaceAndPrintsTheDaysBeforeIt) {
    const TemporaryFolder folder;
    const auto file = folder.write("export.xml", threeRecords + "</Wrong>");
    EXPECT_EQ(stepdays(file),
              (Outcome{0, "2024-03-10\t-300\n2024-03-09\t17\n",
                       "stopped at byte " + std::to_string(threeRecords.size() + 2) +
                           ": mismatched tag\n"}));
    EXPECT_EQ(stepdays(folder.write("empty.xml", "")),
              (Outcome{0, "", "stopped at byte 0: no element found\n"}));
}

TEST(Stepdays, failsIfTheFileCannotBeOpened) {
    const TemporaryFolder folder;
    const std::string none = folder.path() / "none";
    EXPECT_EQ(stepdays(none), (Outcome{1, "", none + ": No such file or directory\n"}));
    EXPECT_EQ(stepdays(folder.path()),
              (Outcome{1, "", folder.path().string() + ": Is a directory\n"}));
    const std::string pipe = folder.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(stepdays(pipe), (Outcome{1, "", pipe + ": Operation not supported\n"}));
}

TEST(Stepdays, requiresOneFile) {
    EXPECT_EQ(stepdays(""),
              (Outcome{2, "", "usage: stepdays [--threads N] [--reader expat|fast] FILE\n"}));
    EXPECT_EQ(stepdays("a b"),
              (Outcome{2, "", "usage: stepdays [--threads N] [--reader expat|fast] FILE\n"}));
}

}  // namespace

}  // namespace ambulet
