#include "import/fast/FastValues.h"

#include <gtest/gtest.h>

#include <string>

namespace ambulet {

namespace {

const std::string padding(FastBytes::padding, '\0');

std::size_t sizeAt(const FastValues& values, char quote, const std::string& text) {
    return values.sizeAt(quote, (text + padding).data());
}

TEST(FastValues, aValueIsKnownOnceItIsKept) {
    FastValues values;
    EXPECT_EQ(sizeAt(values, '"', "a&amp;b\" c=\""), 0U);
    values.keep("a&amp;b\"");
    values.keep("\xC3\xA4\"");
    EXPECT_EQ(sizeAt(values, '"', "a&amp;b\" c=\""), 7U);
    EXPECT_EQ(sizeAt(values, '"', "\xC3\xA4\"/>"), 2U);
    EXPECT_EQ(sizeAt(values, '"', "a&amp;c\""), 0U);
    EXPECT_EQ(sizeAt(values, '"', "a&amp;b"), 0U) << "it does not end";
}

TEST(FastValues, aValueIsKnownInTheQuotesInWhichItWasKept) {
    FastValues values;
    values.keep("it's &lt;\"");
    EXPECT_EQ(sizeAt(values, '"', "it's &lt;\""), 9U);
    EXPECT_EQ(sizeAt(values, '\'', "it's &lt;\""), 0U);
}

TEST(FastValues, moreThanThereIsRoomForDoesNoHarm) {
    FastValues values;
    const auto value = [](int number) { return "\xC3\xA4" + std::to_string(number) + '"'; };
    for (int number = 0; number < 10000; ++number) {
        values.keep(value(number));
        EXPECT_EQ(sizeAt(values, '"', value(number)), value(number).size() - 1);
    }
    int known = 0;
    for (int number = 0; number < 10000; ++number) {
        known += sizeAt(values, '"', value(number)) == 0 ? 0 : 1;
    }
    EXPECT_GT(known, 100);
    EXPECT_LT(known, 5000);
}

TEST(FastValues, aVeryLongValueIsNotKept) {
    FastValues values;
    const std::string value = "\xC3\xA4" + std::string(2000, 'a') + '"';
    values.keep(value);
    EXPECT_EQ(sizeAt(values, '"', value), 0U);
}

}  // namespace

}  // namespace ambulet
