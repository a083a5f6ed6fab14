#include "makeexport/Arguments.h"

#include <gtest/gtest.h>

namespace makeexport {

namespace {

using Words = std::vector<const char*>;

Arguments good(const Words& words) {
    const auto read = readArguments(words);
    if (const auto* bad = std::get_if<BadArguments>(&read)) {
        ADD_FAILURE() << bad->reason;
        return {};
    }
    return std::get<Arguments>(read);
}

std::string reason(const Words& words) {
    const auto read = readArguments(words);
    const auto* bad = std::get_if<BadArguments>(&read);
    return bad != nullptr ? bad->reason : "none";
}

TEST(Arguments, aFileAloneIsMadeFromSeed1With20Megabytes) {
    const Arguments arguments = good({"export.xml"});
    EXPECT_EQ(arguments.path, "export.xml");
    EXPECT_EQ(arguments.seed, 1U);
    EXPECT_EQ(arguments.size, 20U * 1024 * 1024);
    EXPECT_TRUE(arguments.sums.empty());
    EXPECT_FALSE(arguments.help);
}

TEST(Arguments, sizesAreInBytesOrIn1024OfThem) {
    EXPECT_EQ(good({"--size", "1024", "-"}).size, 1024U);
    EXPECT_EQ(good({"--size", "1K", "-"}).size, 1024U);
    EXPECT_EQ(good({"--size", "100M", "-"}).size, 104857600U);
    EXPECT_EQ(good({"--size", "8G", "-"}).size, 8589934592U);
}

TEST(Arguments, sizesFrom1KTo8GAreTakenAndNoOthers) {
    for (const char* size : {"1023", "0", "9G", "8589934593", "", "M", "1T", "1m", "-1K", "1 K",
                             "1.5M", "0x400", "17179869184G", "99999999999999999999"}) {
        EXPECT_EQ(reason({"--size", size, "-"}),
                  std::string("--size is from 1K to 8G, as 500K, 100M, 1G or in bytes, not ") +
                      size);
    }
}

TEST(Arguments, aSeedIsAnyUnsigned64BitNumber) {
    EXPECT_EQ(good({"--seed", "18446744073709551615", "-"}).seed, 18446744073709551615U);
    EXPECT_EQ(good({"--seed", "0", "-"}).seed, 0U);
    for (const char* seed : {"-1", "", "one", "18446744073709551616", "7x"}) {
        EXPECT_EQ(reason({"--seed", seed, "-"}),
                  std::string("--seed is a number from 0 to 2^64-1, not ") + seed);
    }
}

TEST(Arguments, sumsAreTakenInOrderForZonesThatTheSystemKnows) {
    const Arguments arguments =
        good({"--sums", "UTC=u.txt", "out.xml", "--sums", "Asia/Kolkata=a=b"});
    const std::vector<SumsWanted> expected = {{"UTC", "u.txt"}, {"Asia/Kolkata", "a=b"}};
    EXPECT_EQ(arguments.sums, expected);
    EXPECT_EQ(reason({"--sums", "Mars/Olympus=f", "-"}),
              "the system knows no time zone Mars/Olympus");
    EXPECT_EQ(reason({"--sums", "UTC", "-"}), "--sums is ZONE=FILE, not UTC");
    EXPECT_EQ(reason({"--sums", "UTC=", "-"}), "--sums is ZONE=FILE, not UTC=");
}

TEST(Arguments, thereIsOneFile) {
    EXPECT_EQ(reason({}), "no FILE");
    EXPECT_EQ(reason({"--seed", "3"}), "no FILE");
    EXPECT_EQ(reason({"a.xml", "b.xml"}), "more than one FILE: b.xml");
    EXPECT_EQ(good({"--", "--size"}).path, "--size");
}

TEST(Arguments, onlyOneFileIsStandardOutput) {
    EXPECT_EQ(good({"-"}).path, "-");
    EXPECT_EQ(good({"--sums", "UTC=-", "a.xml"}).sums[0].path, "-");
    EXPECT_EQ(reason({"--sums", "UTC=-", "-"}), "only one file can be standard output");
}

TEST(Arguments, anUnknownOptionAndAMissingValueAreRefused) {
    EXPECT_EQ(reason({"--sized", "1K", "-"}), "unknown option --sized");
    EXPECT_EQ(reason({"-s", "-"}), "unknown option -s");
    EXPECT_EQ(reason({"-", "--seed"}), "--seed without a value");
}

TEST(Arguments, helpNeedsNoFile) {
    EXPECT_TRUE(good({"--help"}).help);
}

}  // namespace

}  // namespace makeexport
