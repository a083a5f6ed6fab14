#include "makeexport/Random.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

namespace makeexport {

namespace {

TEST(Random, itIsSplitMix64) {
    // The published sequences for the seeds 0 and 1234567.
    Random zero(0);
    EXPECT_EQ(zero.next(), 0xe220a8397b1dcdafU);
    EXPECT_EQ(zero.next(), 0x6e789e6aa1b965f4U);
    EXPECT_EQ(zero.next(), 0x06c45d188009454fU);
    Random other(1234567);
    EXPECT_EQ(other.next(), 6457827717110365317U);
    EXPECT_EQ(other.next(), 3203168211198807973U);
    EXPECT_EQ(other.next(), 9817491932198370423U);
}

TEST(Random, bothEndsOfARangeOccurAndNothingBeyond) {
    Random random(5);
    std::set<int> seen;
    for (int i = 0; i < 1000; ++i) {
        seen.insert(random.between(-2, 3));
    }
    EXPECT_EQ(seen, (std::set<int>{-2, -1, 0, 1, 2, 3}));
}

TEST(Random, theStreamsOfASeedDiffer) {
    std::set<std::uint64_t> first;
    for (std::uint64_t index = 0; index < 100; ++index) {
        first.insert(Random::stream(7, index).next());
        first.insert(Random::stream(8, index).next());
    }
    EXPECT_EQ(first.size(), 200U);
}

TEST(Random, everyElementOfAContainerIsChosen) {
    Random random(11);
    constexpr std::array letters = {'a', 'b', 'c'};
    std::set<char> seen;
    for (int i = 0; i < 100; ++i) {
        seen.insert(random.oneOf(letters));
    }
    EXPECT_EQ(seen, (std::set<char>{'a', 'b', 'c'}));
}

}  // namespace

}  // namespace makeexport
