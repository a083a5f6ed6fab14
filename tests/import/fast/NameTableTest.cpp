#include "import/fast/NameTable.h"

#include <gtest/gtest.h>

#include <string>

namespace ambulet {

namespace {

TEST(NameTable, eachNameHasOneNumberAndEachNumberOneName) {
    NameTable table;
    const auto record = table.id("Record");
    const auto workout = table.id("Workout");
    ASSERT_TRUE(record && workout);
    EXPECT_NE(record, workout);
    EXPECT_EQ(table.id("Record"), record);
    EXPECT_EQ(table.name(*record), "Record");
    EXPECT_EQ(table.name(*workout), "Workout");
}

TEST(NameTable, holdsAsManyNamesAsItsCapacity) {
    NameTable table;
    for (std::size_t number = 0; number < NameTable::capacity; ++number) {
        EXPECT_EQ(table.id("n" + std::to_string(number)), number);
    }
    EXPECT_EQ(table.id("another"), std::nullopt);
    EXPECT_EQ(table.id("n0"), 0);
}

TEST(NameTable, refusesNamesThatAreTooLong) {
    NameTable table;
    EXPECT_EQ(table.id(std::string(NameTable::longestName + 1, 'a')), std::nullopt);
    EXPECT_EQ(table.id(std::string(NameTable::longestName, 'a')), 0);
}

}  // namespace

}  // namespace ambulet
