// The program itself, as a child process.

#include "Lines.h"
#include "Reading.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace makeexport {

using namespace ambulet;

namespace {

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Ended {
    int status;
    std::string out;
    std::string err;
    long kilobytes;  // the most memory that it had at a time
};

class Program : public testing::Test {
  protected:
    Ended run(std::vector<std::string> words) {
        words.insert(words.begin(), MAKEEXPORT);
        std::vector<char*> argv;
        argv.reserve(words.size() + 1);
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        const std::string out = path("stdout");
        const std::string err = path("stderr");

        const pid_t child = fork();
        if (child == 0) {
            dup2(open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
            dup2(open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            execv(MAKEEXPORT, argv.data());
            _exit(127);
        }
        int status = 0;
        rusage usage{};
        EXPECT_EQ(wait4(child, &status, 0, &usage), child);
        EXPECT_TRUE(WIFEXITED(status));
        return {WEXITSTATUS(status), contentOf(out), contentOf(err), usage.ru_maxrss};
    }

    std::string path(const std::string& name) const { return folder.path() / name; }

    TemporaryFolder folder;
};

TEST_F(Program, theFileAndStandardOutputGetTheSameExport) {
    EXPECT_EQ(run({"--size", "100K", path("a.xml")}).status, 0);
    const Ended ended = run({"--size", "100K", "-"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "");
    EXPECT_GT(ended.out.size(), 100000U);
    EXPECT_TRUE(contentOf(path("a.xml")) == ended.out);
}

TEST_F(Program, theExportIsTheSameInEveryZoneAndLocale) {
    const std::string here = run({"--size", "100K", "-"}).out;
    const ScopedTimeZone zone("Asia/Kathmandu");
    const ScopedLocale locale("de_DE.UTF-8");
    EXPECT_TRUE(run({"--size", "100K", "-"}).out == here);
}

TEST_F(Program, theSumsOfEveryZoneAskedForAreWhatTheRecordsSay) {
    for (const char* seed : {"4", "5", "6"}) {
        const Ended ended = run({"--seed", seed, "--size", "1M", "--sums", "UTC=" + path("u"),
                                 "--sums", "America/New_York=" + path("n"), "--sums",
                                 "Asia/Kolkata=" + path("k"), path("a.xml")});
        EXPECT_EQ(ended.status, 0) << ended.err;
        const Reading reading = readExport(contentOf(path("a.xml")));
        EXPECT_GT(reading.steps.size(), 150U);
        EXPECT_EQ(firstDifference(contentOf(path("u")), sumsOf(reading.steps, "UTC")), "");
        EXPECT_EQ(firstDifference(contentOf(path("n")), sumsOf(reading.steps, "America/New_York")),
                  "");
        EXPECT_EQ(firstDifference(contentOf(path("k")), sumsOf(reading.steps, "Asia/Kolkata")), "");
    }
}

TEST_F(Program, memoryDoesNotGrowWithTheExport) {
    const Ended small = run({"--size", "3M", "/dev/null"});
    const Ended large = run({"--size", "300M", "/dev/null"});
    EXPECT_EQ(small.status, 0);
    EXPECT_EQ(large.status, 0);
    EXPECT_LT(large.kilobytes, small.kilobytes + 8192);
}

TEST_F(Program, aFileThatCannotBeMadeIsSaidAndEndsWith1) {
    const std::string nowhere = path("no/such/folder");
    Ended ended = run({nowhere});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.err, "makeexport: cannot write " + nowhere + ": No such file or directory\n");

    ended = run({"--sums", "UTC=" + nowhere, path("a.xml")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.err, "makeexport: cannot write " + nowhere + ": No such file or directory\n");
    EXPECT_EQ(contentOf(path("a.xml")), "") << "written before it was known";
}

TEST_F(Program, aFullDiskIsSaidAndEndsWith1) {
    // The short one fails when the file is closed, the long one while it is written.
    for (const char* size : {"1K", "20M"}) {
        const Ended ended = run({"--size", size, "/dev/full"});
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.err, "makeexport: cannot write /dev/full: No space left on device\n");
    }
    const Ended ended = run({"--sums", "UTC=/dev/full", path("a.xml")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.err, "makeexport: cannot write /dev/full: No space left on device\n");
}

TEST_F(Program, badArgumentsAreSaidAndEndWith2) {
    const Ended ended = run({"--size", "9G", path("a.xml")});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err, "makeexport: --size is from 1K to 8G, as 500K, 100M, 1G or in bytes, "
                         "not 9G; try makeexport --help\n");
    EXPECT_FALSE(std::filesystem::exists(path("a.xml")));
}

TEST_F(Program, helpGoesToStandardOutput) {
    const Ended ended = run({"--help"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.out.find("Usage: makeexport "), 0U);
    EXPECT_EQ(ended.err, "");
}

}  // namespace

}  // namespace makeexport
