#include "import/fast/Piece.h"

#include "import/fast/StrictParser.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace ambulet {

namespace {

using Vectors = ByteScan::Baseline;

constexpr NameTable::Id element = 3;

class PieceTest : public testing::Test {
  protected:
    static std::string padded(std::string_view text) {
        return std::string(text) + std::string(Prediction::mostBytes + ByteScan::width, '\0');
    }

    /// Adds the piece `text` to the cache. Null if the cache does not accept it.
    Piece* add(std::string_view text, NameTable::Id in = element) {
        const std::string bytes = padded(std::string(text) + '<');
        const auto markup =
            StrictParser::afterValue(names, bytes.data(), bytes.data() + text.size());
        EXPECT_TRUE(markup) << text;
        return cache.add(in, markup.value(), bytes.data());
    }

    Piece* find(std::string_view text, NameTable::Id in = element) const {
        return cache.find(in, padded(text).data());
    }

    Names names;
    PieceCache cache;
};

class PredictionTest : public PieceTest {
  protected:
    /// Lets the prediction learn `value` and, after that, the piece `" b="`. Returns whether the
    /// prediction then holds for `text`.
    bool holds(std::string_view value, std::string_view text) {
        Piece* const piece = add("\" b=\"", next++);
        prediction.learn(value, *piece);
        EXPECT_TRUE(prediction.holds<Vectors>(padded(std::string(value) + "\" b=\"").data()));
        return prediction.holds<Vectors>(padded(text).data());
    }

    Prediction prediction;
    NameTable::Id next = 0;
};

TEST_F(PredictionTest, holdsForAnotherPlainValueOfTheSameLength) {
    EXPECT_TRUE(holds("2024-03-09", "2023-12-31\" b=\""));
    EXPECT_TRUE(holds("abc", "(>~\" b=\""));
    EXPECT_TRUE(holds("abc", "abd\" b=\"<\xFF anything"));
    EXPECT_FALSE(holds("abc", "ab\" b=\""));
    EXPECT_FALSE(holds("abc", "abcd\" b=\""));
    EXPECT_TRUE(holds("", "\" b=\""));
    const std::string longOne(100, 'a');
    EXPECT_TRUE(holds(longOne, std::string(100, 'b') + "\" b=\""));
    EXPECT_FALSE(holds(longOne, std::string(99, 'b') + "<\" b=\""));
}

TEST_F(PredictionTest, failsIfAnotherPieceFollows) {
    EXPECT_FALSE(holds("abc", "abc\" c=\""));
    EXPECT_FALSE(holds("abc", "abc\"  b=\""));
    EXPECT_FALSE(holds("abc", "abc\" b='"));
}

TEST_F(PredictionTest, failsIfACharacterIsNotPlain) {
    for (const char byte :
         {'"', '\'', '<', '&', '\n', '\t', '\x01', '\x7F', '\x80', '\xFF', '\0'}) {
        EXPECT_FALSE(holds("abc", std::string("a") + byte + "c\" b=\"")) << int{byte};
    }
}

TEST_F(PredictionTest, referencesAndNonASCIILettersMustBeTheSame) {
    const struct {
        const char* value;
        const char* other;
        bool isHeld;
    } cases[] = {
        {"a&lt;c", "b&lt;d", true},     {"a&lt;c", "a&gt;c", false},
        {"a&lt;c", "a&lt,c", false},    {"a&lt;c", "axlt;c", false},
        {"a\u00EBc", "b\u00EBd", true}, {"a\u00EBc", "a\u00EAc", false},
        {"a\u00EBc", "abcd", false},    {"a\nc", "abc", false},
    };
    for (const auto& [value, other, isHeld] : cases) {
        EXPECT_EQ(holds(value, std::string(other) + "\" b=\""), isHeld) << other;
    }
}

TEST_F(PredictionTest, knowsTheSizesOfTheValueAloneAndWithThePiece) {
    holds("abc", "");
    EXPECT_EQ(prediction.valueSize(), 3U);
    EXPECT_EQ(prediction.size(), 3U + 5U);
}

TEST_F(PredictionTest, holdsForValuesUpToTheLimitOfItsBytes) {
    for (const std::size_t size : {1U, 27U, 28U, 59U, 60U, 507U}) {
        const std::string end = std::string(size - 1, 'b') + "\" b=\"";
        EXPECT_TRUE(holds(std::string(size, 'a'), 'c' + end));
        EXPECT_FALSE(holds(std::string(size, 'a'), '<' + end));
    }
    static_assert(Prediction::mostBytes == 507 + 5);
}

TEST_F(PieceTest, aPieceIsFoundByItsBytesAndItsElement) {
    Piece* const blank = add("\" b=\"");
    Piece* const end = add("\"/>\n <a b=\"");
    ASSERT_TRUE(blank && end);
    EXPECT_EQ(find("\" b=\"and so on"), blank);
    EXPECT_EQ(find("\"/>\n <a b=\"and so on"), end);
    EXPECT_EQ(find("\"/>\n <a c=\""), nullptr);
    EXPECT_EQ(find("\" b='"), nullptr);
    EXPECT_EQ(find("\" b=\"", element + 1), nullptr);
}

TEST_F(PieceTest, piecesWithTextOrCommentsAreNotKept) {
    EXPECT_EQ(add("\">text<a b=\""), nullptr);
    EXPECT_EQ(add("\"/><!-- --><a b=\""), nullptr);
    EXPECT_EQ(add("\"/>\n"), nullptr) << "no quote marks its end";
}

TEST_F(PieceTest, aPieceIsKeptUpToTheLimitOfItsBytes) {
    for (const std::size_t size : {5U, 32U, 33U, 34U, 64U, 65U, 66U, 255U, 256U}) {
        const std::string text = '"' + std::string(size - 4, ' ') + "b=\"";
        Piece* const piece = add(text);
        ASSERT_NE(piece, nullptr) << size;
        EXPECT_EQ(piece->markup.size, size);
        EXPECT_EQ(find(text), piece);
    }
    static_assert(Piece::mostBytes == 256);
    EXPECT_EQ(add('"' + std::string(257 - 4, ' ') + "b=\""), nullptr);
}

TEST_F(PieceTest, piecesAreKeptWhicheverLetterOfANameDiffers) {
    std::string name = "longestName";
    for (char& letter : name) {
        for (letter = 'a'; letter <= 'z'; ++letter) {
            const std::string piece = "\" " + name + "=\"";
            EXPECT_TRUE(find(piece) != nullptr || add(piece) != nullptr) << piece;
        }
        letter = 'n';
        names = {};
        cache.clear();
    }
}

TEST_F(PieceTest, theCacheHasAMaximumSize) {
    int kept = 0;
    for (std::size_t blanks = 1; blanks < 200; ++blanks) {
        for (NameTable::Id in = 0; in < 100; ++in) {
            kept += add('"' + std::string(blanks, ' ') + "b=\"", in) != nullptr ? 1 : 0;
        }
    }
    EXPECT_TRUE(cache.isFull());
    EXPECT_GT(kept, 100);
    EXPECT_LT(kept, 10'000);
    cache.clear();
    EXPECT_FALSE(cache.isFull());
    EXPECT_EQ(find("\" b=\"", 0), nullptr);
    EXPECT_NE(add("\" b=\""), nullptr);
}

TEST_F(PieceTest, anyPredictionOfAPieceMayHold) {
    Piece* const piece = add("\" a=\"");
    Piece* const follower = add("\" b=\"");
    EXPECT_EQ(piece->predictionAt<Vectors>(padded("Phone\" b=\"").data()), nullptr);
    piece->predictions[0].learn("Phone", *follower);
    piece->predictions[1].learn("Watch 1", *follower);
    const Prediction* const found = piece->predictionAt<Vectors>(padded("Watch 2\" b=\"").data());
    ASSERT_EQ(found, &piece->predictions[1]);
    EXPECT_EQ(found->valueSize(), 7U);
    EXPECT_EQ(&found->next(), follower);
    EXPECT_EQ(piece->predictionAt<Vectors>(padded("Pods\" b=\"").data()), nullptr);
}

}  // namespace

}  // namespace ambulet
