#include "import/fast/FastJoining.h"

#include <gtest/gtest.h>

#include <string>

namespace ambulet {

namespace {

constexpr FastNames::Id unit = 3;
constexpr FastNames::Id date = 4;

/// Reads on to `tagCount`; of eight tags so many bring something new, with few values.
bool readOn(FastJoining& joining, std::uint64_t& tags, std::uint64_t tagCount, int newInEight) {
    bool isOver = false;
    for (; tags < tagCount; ++tags) {
        if (joining.pays(unit) && static_cast<int>(tags % 8) < newInEight) {
            joining.note(unit, std::to_string(tags % 10), 1);
        }
        if (tags % 500 == 0) {
            isOver |= joining.judge(tags);
        }
    }
    return isOver;
}

TEST(FastJoining, anAttributeVariesWhoseValuesDoNotComeAgain) {
    FastJoining joining;
    EXPECT_TRUE(joining.pays(date));
    for (int number = 0; number < 200; ++number) {
        joining.note(date, std::to_string(number), 1);
    }
    EXPECT_FALSE(joining.pays(date));
    EXPECT_TRUE(joining.pays(unit));
    EXPECT_TRUE(joining.judge(200)) << "what they made is of no use";
    EXPECT_FALSE(joining.judge(201));
}

TEST(FastJoining, anAttributeDoesNotVaryWhoseValuesComeAgainAfterOthers) {
    FastJoining joining;
    for (int number = 0; number < 5000; ++number) {
        joining.note(unit, std::to_string(number % 50), 1);
    }
    EXPECT_TRUE(joining.pays(unit));
    EXPECT_FALSE(joining.judge(1000));
}

TEST(FastJoining, anAttributeMayBeginToVary) {
    FastJoining joining;
    for (int number = 0; number < 2000; ++number) {
        joining.note(unit, std::to_string(number < 1500 ? number % 50 : number), 1);
    }
    EXPECT_FALSE(joining.pays(unit));
}

TEST(FastJoining, anAttributeWithVeryManyValuesInOnePlaceVaries) {
    FastJoining joining;
    joining.note(unit, "a", 200);
    EXPECT_TRUE(joining.pays(unit));
    joining.note(unit, "a", 1000);
    EXPECT_FALSE(joining.pays(unit));
}

TEST(FastJoining, whatIsSaidToVaryVaries) {
    FastJoining joining;
    joining.setVaries(date);
    EXPECT_FALSE(joining.pays(date));
    EXPECT_FALSE(joining.judge(0));
}

TEST(FastJoining, muchMayBeNewAtTheBeginning) {
    FastJoining joining;
    std::uint64_t tags = 0;
    EXPECT_FALSE(readOn(joining, tags, 8000, 8));
    EXPECT_FALSE(readOn(joining, tags, 100000, 0));
    EXPECT_TRUE(joining.pays(unit));
}

TEST(FastJoining, whereMuchIsNewForLongItDoesNotPay) {
    FastJoining joining;
    std::uint64_t tags = 0;
    EXPECT_TRUE(readOn(joining, tags, 14000, 2));
    EXPECT_FALSE(joining.pays(unit));
    EXPECT_FALSE(joining.pays(date));
}

TEST(FastJoining, itIsTriedAgainAndEverMoreSeldom) {
    FastJoining joining;
    std::uint64_t tags = 0;
    std::uint64_t tried = 0;
    int trials = 0;
    bool paid = false;
    for (std::uint64_t count = 500; count < 2000000; count += 500) {
        readOn(joining, tags, count, 8);
        const bool pays = joining.pays(unit);
        trials += pays && !paid ? 1 : 0;
        tried += pays ? 500 : 0;
        paid = pays;
    }
    EXPECT_GT(trials, 3);
    EXPECT_LT(tried, 200000U);
    readOn(joining, tags, 5000000, 0);
    EXPECT_TRUE(joining.pays(unit)) << "nothing is new any more";
}

}  // namespace

}  // namespace ambulet
