// Tests of the program's arguments, files and sums.

#include "Program.h"

#include "Reading.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace makeexport {

namespace {

class Program : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return folder.path() / name; }

    ambulet::TemporaryFolder folder;
};

TEST_F(Program, theExportIsTheSameInAnotherTimeZoneAndLocaleAndOnStandardOutput) {
    EXPECT_EQ(run("--size 100K " + path("a.xml")).status, 0);
    const ambulet::ScopedTimeZone zone("Asia/Kathmandu");
    const ambulet::ScopedLocale locale("de_DE.UTF-8");
    const Ended ended = run("--size 100K -");
    EXPECT_EQ(ended.err, "");
    EXPECT_GT(ended.out.size(), 100000U);
    EXPECT_TRUE(contentOf(path("a.xml")) == ended.out);
}

// In Sao Paulo the clock skipped midnight on some days, such as 2018-11-04. The sums leave out such
// days. Kathmandu is 5:45 ahead of UTC. Kiritimati and Niue have the largest and nearly the
// smallest offset.
TEST_F(Program, theSumsAreCorrectInUnusualTimeZones) {
    const std::vector<std::string> zones = {"UTC", "America/Sao_Paulo", "Asia/Kathmandu",
                                            "Pacific/Kiritimati", "Pacific/Niue"};
    std::string arguments = "--seed 4 --size 30M " + path("a.xml");
    for (std::size_t i = 0; i < zones.size(); ++i) {
        arguments += " --sums " + zones[i] + "=" + path(std::to_string(i));
    }
    EXPECT_EQ(run(arguments).err, "");
    const Reading reading = readExport(contentOf(path("a.xml")));
    for (std::size_t i = 0; i < zones.size(); ++i) {
        const std::string sums = contentOf(path(std::to_string(i)));
        EXPECT_GT(sums.size(), 50000U) << zones[i];
        EXPECT_TRUE(sums == sumsOf(reading, zones[i])) << zones[i];
    }
    EXPECT_EQ(contentOf(path("1")).find("\n2018-11-04\t"), std::string::npos);
}

TEST_F(Program, memoryDoesNotGrowWithTheExport) {
    const ambulet::ScopedVariable freedMemory(
        "ASAN_OPTIONS", "quarantine_size_mb=0:thread_local_quarantine_size_kb=0");
    rusage small{};
    rusage large{};
    EXPECT_EQ(run("--size 3M /dev/null").status, 0);
    getrusage(RUSAGE_CHILDREN, &small);
    EXPECT_EQ(run("--size 300M /dev/null").status, 0);
    getrusage(RUSAGE_CHILDREN, &large);
    // The memory of two equal runs can differ by more than 1 MB. Eight bytes for each of the
    // 730,000 records would be 6 MB. The limit, 4 MB, is between these.
    EXPECT_LT(large.ru_maxrss, small.ru_maxrss + 4096);
}

TEST_F(Program, aFileThatCannotBeWrittenIsReported) {
    const std::string nowhere = path("no/such/folder");
    Ended ended = run(nowhere);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.err, "makeexport: cannot write " + nowhere + ": No such file or directory\n");

    // The short export fails when the file is closed, the long one while it is written.
    const std::vector<std::string> all = {"--size 1K /dev/full", "--size 8G /dev/full",
                                          "--sums UTC=/dev/full " + path("a.xml")};
    for (const std::string& arguments : all) {
        ended = run(arguments);
        EXPECT_EQ(ended.status, 1) << arguments;
        EXPECT_EQ(ended.err, "makeexport: cannot write /dev/full: No space left on device\n");
    }
}

TEST_F(Program, badArgumentsAreReported) {
    const std::string sizes = "--size is from 1K to 8G (without K, M or G, it is in bytes), not ";
    const std::string seeds = "--seed is a number from 0 to 2^64-1, not ";
    const std::vector<std::pair<std::string, std::string>> all = {
        {"", "no FILE"},
        {"--seed 3", "no FILE"},
        {"a b", "more than one FILE: b"},
        {"--sized 1K -", "unknown option --sized"},
        {"- --seed", "--seed without a value"},
        {"--size 1023 -", sizes + "1023"},
        {"--size 9G -", sizes + "9G"},
        {"--size 17179869184G -", sizes + "17179869184G"},
        {"--size 1m -", sizes + "1m"},
        {"--size '' -", sizes},
        {"--seed -1 -", seeds + "-1"},
        {"--seed 18446744073709551616 -", seeds + "18446744073709551616"},
        {"--sums UTC -", "--sums is ZONE=FILE, not UTC"},
        {"--sums UTC= -", "--sums is ZONE=FILE, not UTC="},
        {"--sums Mars/Olympus=f -", "the system knows no time zone Mars/Olympus"},
    };
    for (const auto& [arguments, reason] : all) {
        const Ended ended = run(arguments);
        EXPECT_EQ(ended.status, 2);
        EXPECT_EQ(ended.out, "");
        EXPECT_EQ(ended.err, "makeexport: " + reason + "; try makeexport --help\n");
    }
}

TEST_F(Program, helpGoesToStandardOutput) {
    EXPECT_EQ(run("--help").out.find("Usage: makeexport "), 0U);
}

}  // namespace

}  // namespace makeexport
