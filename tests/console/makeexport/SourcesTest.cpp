#include "makeexport/Sources.h"

#include "makeexport/Period.h"

#include <gtest/gtest.h>

namespace makeexport {

using namespace std::chrono;

namespace {

TEST(Sources, aDeviceHasItsNextVersionFromADayOn) {
    EXPECT_EQ(sourceOn(local_days(2020y / November / 12), Maker::Phone).version, "13.3");
    EXPECT_EQ(sourceOn(local_days(2020y / November / 13), Maker::Phone).version, "14.2.1");
    EXPECT_EQ(sourceOn(lastDay, Maker::Phone).version, "18.5");
}

TEST(Sources, everyMakerHasASourceOnEveryDay) {
    for (const Maker maker :
         {Maker::Phone, Maker::Watch, Maker::Pedometer, Maker::Scale, Maker::Cuff, Maker::Diary}) {
        for (const local_days day : daysOfPeriod()) {
            const Source& source = sourceOn(day, maker);
            ASSERT_EQ(source.maker, maker);
            ASSERT_LE(source.since, day);
        }
    }
}

TEST(Sources, anAppWithoutADeviceHasNoDeviceAttribute) {
    Random random(1);
    std::string text;
    appendSource(text, sourceOn(firstDay, Maker::Pedometer), random);
    EXPECT_EQ(text, " sourceName=\"Pas à Pas\" sourceVersion=\"2.4.1\"");
}

}  // namespace

}  // namespace makeexport
