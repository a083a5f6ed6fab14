#include "makeexport/Timeline.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace makeexport {

using namespace std::chrono;

namespace {

std::vector<local_days> someDays(int number) {
    std::vector<local_days> list(static_cast<std::size_t>(number));
    std::ranges::generate(list, [day = local_days(days(98))]() mutable { return day += days(2); });
    return list;
}

// Ten days in the bytes from 500 to 1500: a hundred bytes a day.
const Timeline dense(someDays(10), 500, 1500);

TEST(Timeline, bytesAreSharedOutEvenlyAmongTheDays) {
    EXPECT_EQ(dense.at(500, 20).day, local_days(days(100)));
    EXPECT_EQ(dense.at(599, 20).day, local_days(days(100)));
    EXPECT_EQ(dense.at(600, 20).day, local_days(days(102)));
    EXPECT_EQ(dense.at(1499, 20).day, local_days(days(118)));
}

TEST(Timeline, theTimeOfDayIsHowMuchOfTheDaysBytesIsWritten) {
    EXPECT_EQ(dense.at(600, 20).ofDay, 0s);
    EXPECT_EQ(dense.at(625, 20).ofDay, 6h);
    EXPECT_EQ(dense.at(675, 20).ofDay, 18h);
}

TEST(Timeline, theElementsLeftAreThoseThatFitIntoTheRestOfTheDay) {
    EXPECT_EQ(dense.at(600, 20).left, 5);
    EXPECT_EQ(dense.at(640, 20).left, 3);
    EXPECT_EQ(dense.at(680, 20).left, 1);
    EXPECT_EQ(dense.at(699, 20).left, 1);
}

TEST(Timeline, elementsLongerThanADaysBytesPassOverDays) {
    const Timeline sparse(someDays(10), 0, 40);
    EXPECT_EQ(sparse.at(0, 20).day, local_days(days(100)));
    EXPECT_EQ(sparse.at(20, 20).day, local_days(days(110)));
    EXPECT_EQ(sparse.at(20, 20).left, 1);
}

TEST(Timeline, theLargestExportIsNoTrouble) {
    const std::uint64_t bytes = std::uint64_t{8} << 30;
    const Timeline large(someDays(4000), 0, bytes);
    EXPECT_EQ(large.at(bytes / 2, 420).day, local_days(days(100 + 2 * 2000)));
    EXPECT_EQ(large.at(bytes - 1, 420).day, local_days(days(100 + 2 * 3999)));
}

}  // namespace

}  // namespace makeexport
