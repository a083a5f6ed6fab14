#include "import/xml/InputBuffer.h"

#include "import/xml/InputFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <system_error>

namespace ambulet {

namespace {

TEST(InputBuffer, readsABlockAndAppendsNullCharacters) {
    const TemporaryFolder folder;
    std::error_code error;
    const auto file = InputFile::open(folder.write("file", "0123456789"), error);
    const InputBuffer buffer(3, 6, 4);
    EXPECT_EQ(buffer.read(file.value(), 0, 6), 6U);
    EXPECT_EQ(std::string_view(buffer.begin(), 10), std::string_view("012345\0\0\0\0", 10));
    EXPECT_EQ(buffer.read(file.value(), 7, 6), 3U) << "up to the end";
    EXPECT_EQ(std::string_view(buffer.begin(), 7), std::string_view("789\0\0\0\0", 7));
    EXPECT_EQ(buffer.read(file.value(), 10, 6), 0U);
}

TEST(InputBuffer, hasWritableBytesBeforeTheBlockWhichIsAlignedToAPage) {
    const InputBuffer buffer(5000, 6, 4);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer.begin()) % 4096, 0U);
    for (std::size_t place = 1; place <= 5000; ++place) {
        buffer.begin()[-static_cast<std::ptrdiff_t>(place)] = 'x';
    }
}

}  // namespace

}  // namespace ambulet
