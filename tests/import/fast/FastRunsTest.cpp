#include "import/fast/FastRuns.h"

#include "import/fast/FastGrammar.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

namespace {

class FastRunsTest : public testing::Test {
  protected:
    /// The bytes from a closing quote on, with what has to come after them.
    static std::string padded(std::string_view text) {
        return std::string(text) + std::string(FastBytes::padding, '\0');
    }

    FastRun* add(std::string_view text) {
        const std::string bytes = padded(text);
        const auto markup =
            FastGrammar::afterValue(names, bytes.data(), bytes.data() + text.size());
        return markup ? runs.add(*markup, bytes.data()) : nullptr;
    }

    FastRun* find(std::string_view text, FastRun* last = nullptr) {
        const std::string bytes = padded(text);
        return runs.find(bytes.data(), bytes.data() + text.size(), last);
    }

    FastRun* join(FastRun* run, std::string_view value, const FastRun& next) {
        runs.join(*run, value, false, next);
        return find(run->bytes + std::string(value) + next.bytes);
    }

    FastVocabulary names;
    FastRuns runs;
};

TEST_F(FastRunsTest, markupBetweenTwoValuesIsKnownOnceItIsKept) {
    EXPECT_EQ(find("\" unit=\"count\""), nullptr);
    FastRun* const unit = add("\" unit=\"");
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(find("\" unit=\"count\""), unit);
    EXPECT_EQ(find("\" unit='count'"), nullptr);
    EXPECT_EQ(unit->quote, '"');
    EXPECT_EQ(names.attributes.name(unit->attribute), "unit");
}

TEST_F(FastRunsTest, markupWithTextInItIsNotKept) {
    EXPECT_EQ(add("\"/>a <Record type=\""), nullptr);
    EXPECT_NE(add("\"/>\n <Record type=\""), nullptr);
}

TEST_F(FastRunsTest, theLongestRunThatFitsIsFound) {
    FastRun* const name = add("\" name=\"");
    FastRun* const unit = add("\" unit=\"");
    FastRun* const both = join(name, "Phone", *unit);
    EXPECT_EQ(both->bytes, "\" name=\"Phone\" unit=\"");
    EXPECT_EQ(both->attribute, unit->attribute);
    EXPECT_EQ(find("\" name=\"Phone\" unit=\"count"), both);
    EXPECT_EQ(find("\" name=\"Watch\" unit=\"count"), name);
    EXPECT_EQ(find("\" name=\"Phone\"/>"), name);
    EXPECT_EQ(find("\" name=\"Phone\" unit="), name) << "the last byte does not fit";
}

TEST_F(FastRunsTest, whatFollowedLastIsNoMoreThanAGuess) {
    FastRun* const name = add("\" name=\"");
    FastRun* const unit = add("\" unit=\"");
    FastRun* const phone = join(name, "Phone", *unit);
    FastRun* const watch = join(name, "Watch", *unit);
    unit->next = phone;
    EXPECT_EQ(find("\" name=\"Phone\" unit=\"", unit), phone);
    EXPECT_EQ(find("\" name=\"Watch\" unit=\"", unit), watch);
    EXPECT_EQ(find("\" name=\"Pads\" unit=\"", unit), name);
    EXPECT_EQ(find("\" unit=\"", unit), unit);
    EXPECT_EQ(find("\" date=\"", unit), nullptr);
}

TEST_F(FastRunsTest, theLongestRunThatFitsIsFoundInWhateverOrderTheyCome) {
    FastRun* const name = add("\" name=\"");
    FastRun* const unit = add("\" unit=\"");
    std::vector<FastRun*> known;
    for (const std::string device : {"Phone", "Phone 2", "Watch", "a pair of pods"}) {
        FastRun* const named = join(name, device, *unit);
        for (const std::string each : {"count", "count/min", "km", "a long name of a unit"}) {
            known.push_back(join(named, each, *name));
        }
    }
    for (int times = 0; times < 3; ++times) {
        for (std::size_t index = 0; index < known.size(); ++index) {
            FastRun* const run = known[index * 7 % known.size()];
            EXPECT_EQ(find(run->bytes + "Phone\"/>"), run);
            std::string other = run->bytes;
            other[other.size() - 9] = '?';  // the last byte of the unit
            EXPECT_EQ(find(other), run->shorter);
        }
    }
}

TEST_F(FastRunsTest, theSameValueMayBeFollowedByOtherMarkup) {
    FastRun* const name = add("\" name=\"");
    FastRun* const unit = join(name, "Phone", *add("\" unit=\""));
    FastRun* const date = join(name, "Phone", *add("\" date=\""));
    EXPECT_NE(unit, date);
    EXPECT_EQ(find("\" name=\"Phone\" unit=\""), unit);
    EXPECT_EQ(find("\" name=\"Phone\" date=\""), date);
}

TEST_F(FastRunsTest, aRunThatGoesOnInAnotherTagSaysWhatEachTagHas) {
    FastRun* const unit = add("\" unit=\"");
    FastRun* const tag = add("\">\n <Record type=\"");
    FastRun* const type = join(unit, "count", *tag);
    FastRun* const name = join(type, "steps", *add("\" name=\""));
    ASSERT_EQ(name->parts.size(), 2U);
    const FastRun::Part& first = name->parts[0];
    const FastRun::Part& second = name->parts[1];
    EXPECT_FALSE(first.markup.endsTag);
    EXPECT_TRUE(first.keepsDepth);
    EXPECT_TRUE(first.attributes.hasAnyOf(FastNames::Set(unit->attribute)));
    EXPECT_FALSE(first.attributes.hasAnyOf(FastNames::Set(tag->attribute)));
    EXPECT_EQ(second.offset, std::string_view("\" unit=\"count").size());
    EXPECT_TRUE(second.markup.endsTag);
    EXPECT_FALSE(second.keepsDepth) << "the first tag's element is left open";
    EXPECT_TRUE(second.attributes.hasAnyOf(FastNames::Set(tag->attribute)));
    EXPECT_TRUE(second.attributes.hasAnyOf(FastNames::Set(name->attribute)));
    EXPECT_FALSE(second.attributes.hasAnyOf(FastNames::Set(unit->attribute)));
}

TEST_F(FastRunsTest, aRunIsNotMadeLongerThanWhatMayBeComparedAtOnce) {
    FastRun* run = add("\" name=\"");
    const FastRun& unit = *add("\" unit=\"");
    const std::string value(300, 'a');
    for (int times = 0; times < 10; ++times) {
        run = join(run, value, unit);
    }
    EXPECT_GT(run->bytes.size(), 600U);
    EXPECT_LE(run->bytes.size(), FastBytes::padding);
}

TEST_F(FastRunsTest, memoryIsBounded) {
    FastRun* const name = add("\" name=\"");
    FastRun* const unit = add("\" unit=\"");
    std::size_t count = 0;
    while (!runs.isFull() && count < 1000000) {
        runs.join(*name, std::to_string(count++), false, *unit);
    }
    EXPECT_LT(count, 5000U);
    runs.join(*name, "more", false, *unit);
    EXPECT_EQ(find("\" name=\"more\" unit=\""), name);
    EXPECT_EQ(add("\" date=\""), nullptr);
    EXPECT_NE(find("\" name=\"7\" unit=\""), name);

    runs.clear();
    EXPECT_FALSE(runs.isFull());
    EXPECT_EQ(find("\" name=\"7\" unit=\""), nullptr);
    EXPECT_NE(add("\" date=\""), nullptr);
}

TEST_F(FastRunsTest, theManyShortTagsOfARunCountForItsMemory) {
    FastRun* const tag = add("\"/><a b=\"");
    FastRun* run = tag;
    while (run->bytes.size() + tag->bytes.size() < 900) {
        run = join(run, "", *tag);
    }
    const std::size_t parts = run->parts.size();
    EXPECT_EQ(parts, 99U);  // of nine bytes each
    std::size_t count = 0;
    while (!runs.isFull() && count < 100'000) {
        runs.join(*run, std::to_string(count++), false, *tag);
    }
    EXPECT_LT(count * parts * sizeof(FastRun::Part), std::size_t{2'000'000});
    EXPECT_GT(count, 50U);
}

}  // namespace

}  // namespace ambulet
