#include "makeexport/Output.h"

#include <gtest/gtest.h>

namespace makeexport {

namespace {

TEST(Output, whatIsWrittenArrivesWholeAndInOrder) {
    std::string arrived;
    Output out([&](std::string_view block) {
        arrived += block;
        return std::error_code();
    });
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        const std::string text = std::to_string(i) + '\n';
        out.write(text);
        expected += text;
    }
    out.finish();
    EXPECT_EQ(arrived, expected);
    EXPECT_EQ(out.size(), expected.size());
    EXPECT_FALSE(out.error());
}

TEST(Output, textIsHandedOnInBlocks) {
    std::size_t blocks = 0;
    Output out([&](std::string_view block) {
        ++blocks;
        EXPECT_LE(block.size(), std::size_t{256} << 10);
        return std::error_code();
    });
    const std::string text(1000, 'x');
    for (int i = 0; i < 10000; ++i) {
        out.write(text);
    }
    out.finish();
    // 262 times 1000 bytes fit into a block; 10,000 / 262 = 38.2.
    EXPECT_EQ(blocks, 39U);
}

TEST(Output, nothingIsHandedOnAfterTheFirstFailure) {
    int blocks = 0;
    Output out([&](std::string_view) {
        ++blocks;
        return std::make_error_code(std::errc::no_space_on_device);
    });
    for (int i = 0; i < 10; ++i) {
        out.write(std::string(200000, 'x'));
    }
    out.finish();
    EXPECT_EQ(blocks, 1);
    EXPECT_EQ(out.error(), std::errc::no_space_on_device);
}

}  // namespace

}  // namespace makeexport
