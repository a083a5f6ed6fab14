#include "import/fast/FastForks.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <string>
#include <string_view>

namespace ambulet {

namespace {

class FastForksTest : public testing::Test {
  protected:
    FastRun* add(std::string_view bytes) {
        FastRun& run = runs.emplace_back();
        run.bytes = bytes;
        forks.add(run);
        return &run;
    }

    /// What is guessed where `text` stands.
    FastRun* guess(std::string_view text) const {
        return forks.guess((std::string(text) + std::string(FastBytes::padding, '\0')).data());
    }

    std::deque<FastRun> runs;
    FastForks forks;
};

TEST_F(FastForksTest, nothingIsGuessedWhereNothingIsKnown) {
    EXPECT_EQ(guess("\" unit=\"count\""), nullptr);
    add("\" unit=\"");
    forks.clear();
    EXPECT_EQ(guess("\" unit=\"count\""), nullptr);
}

TEST_F(FastForksTest, aRunIsGuessedWhereItsBytesAreWhateverComesAfterThem) {
    FastRun* const steps = add("\"/><Record type=\"StepCount\" name=\"Phone\" unit=\"");
    FastRun* const heart = add("\"/><Record type=\"HeartRate\" name=\"Watch\" unit=\"");
    FastRun* const heartPhone = add("\"/><Record type=\"HeartRate\" name=\"Phone\" unit=\"");
    FastRun* const sleep = add("\"/><Record type=\"Sleep\" name=\"");
    FastRun* const unit = add("\" unit=\"");
    for (const std::string_view after : {"", "count\"/>", "m\" value=\"1\"/>"}) {
        for (FastRun* const run : {unit, heartPhone, steps, sleep, heart}) {
            EXPECT_EQ(guess(run->bytes + std::string(after)), run);
        }
    }
}

TEST_F(FastForksTest, ofTwoRunsOfWhichOneBeginsTheOtherTheLongerIsGuessed) {
    FastRun* const name = add("\" name=\"");
    EXPECT_EQ(guess("\" name=\"Watch\" unit=\""), name);
    FastRun* const longer = add("\" name=\"Watch\" unit=\"");
    add("\" name=\"");
    EXPECT_EQ(guess("\" name=\"Watch\" unit=\""), longer);
    EXPECT_EQ(guess("\" name=\"Phone\" unit=\""), longer) << "it begins so";
}

TEST_F(FastForksTest, aRunThatEndsBeforeOthersPartIsGuessedToo) {
    FastRun* const first = add("\" name=\"a long name that does not differ 1\" unit=\"");
    FastRun* const second = add("\" name=\"a long name that does not differ 2\" unit=\"");
    FastRun* const date = add("\" name=\"Watch\" date=\"");
    for (FastRun* const run : {date, second, first}) {
        EXPECT_EQ(guess(run->bytes + "2024-03-09 12:00:00 +0000\" value=\"1\"/>"), run);
        EXPECT_EQ(guess(run->bytes + "2024-03-10 12:00:00 +0000\" value=\"1\"/>"), run);
    }
}

TEST_F(FastForksTest, runsThatAreTooShortForALookDoNoHarm) {
    FastRun* const a = add("\" a=\"");
    add("\" b=\"");
    EXPECT_EQ(guess("\" b=\""), a) << "no more than a guess";
    FastRun* const name = add("\" name=\"");
    EXPECT_EQ(guess("\" name=\""), a);
    forks.clear();
    forks.add(*name);
    forks.add(*a);
    EXPECT_EQ(guess("\" name=\""), name);
}

TEST_F(FastForksTest, moreRunsThanThereIsRoomForDoNoHarm) {
    std::mt19937 chance(1);
    const auto digits = [&] { return std::to_string(100000000 + chance() % 800000000); };
    for (int number = 0; number < 20000; ++number) {
        add("\" name=\"" + digits() + "\" unit=\"" + digits() + "\" date=\"");
    }
    EXPECT_EQ(guess(runs[0].bytes), &runs[0]);
    EXPECT_EQ(guess(runs[1000].bytes), &runs[1000]);
    EXPECT_NE(guess(runs[19999].bytes), &runs[19999]);
    forks.clear();
    forks.add(runs[19999]);
    EXPECT_EQ(guess(runs[0].bytes), &runs[19999]);
}

TEST_F(FastForksTest, runsThatDifferInVeryManyPlacesDoNoHarm) {
    std::string bytes = "\" name=\"" + std::string(900, 'a') + "\" unit=\"";
    FastRun* const first = add(bytes);
    for (std::size_t at = 8; at < 900; ++at) {
        std::string other = bytes;
        other[at] = 'b';
        FastRun* const run = add(other);
        if (at == 8) {
            EXPECT_EQ(guess(other), run);
        }
    }
    EXPECT_EQ(guess(bytes), first);
}

}  // namespace

}  // namespace ambulet
