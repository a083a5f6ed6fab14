#include "import/expat/ExpatReader.h"

#include "import/Mutations.h"
#include "import/Reading.h"
#include "import/SampleExports.h"
#include "import/xml/InputFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace ambulet {

namespace {

using Names = std::vector<std::string>;

// Records the name of each tag, followed by the value of the attribute "a", or by "-" without one.
class Recorder : public XMLReaderDelegate {
  public:
    void didStartElement(std::string_view name, const XMLAttributes& attributes) override {
        names.emplace_back(name).append(attributes.value("a").value_or("-"));
        if (name == "throw") {
            throw std::runtime_error("from the delegate");
        }
    }

    Names names;
};

std::optional<XMLError> read(std::string_view bytes, XMLReaderDelegate& delegate) {
    const TemporaryFolder folder;
    std::error_code error;
    const auto file = InputFile::open(folder.write("file", bytes), error);
    return ExpatReader(1).read(file.value(), delegate);
}

TEST(ExpatReader, reportsStartTagsInDocumentOrder) {
    Recorder recorder;
    EXPECT_EQ(read("<a><b a='1'><c a=''/></b><!-- <x/> --><d></d></a>", recorder), std::nullopt);
    EXPECT_EQ(recorder.names, (Names{"a-", "b1", "c", "d-"}));
}

TEST(ExpatReader, reportsNamesAsTheyAreWritten) {
    Recorder recorder;
    EXPECT_EQ(read("<p:a xmlns:p='urn:x'><p:Größe a='ü&#xFC;&amp;'/><q:b/></p:a>", recorder),
              std::nullopt);
    EXPECT_EQ(recorder.names, (Names{"p:a-", "p:Größeüü&", "q:b-"}));
}

TEST(ExpatReader, reportsTheTagsBeforeAnErrorAndReturnsTheError) {
    Recorder recorder;
    EXPECT_EQ(read("<a><b/><c a='1' a='2'/><d/></a>", recorder),
              (XMLError{16, XMLErrorReason::duplicateAttribute}));
    EXPECT_EQ(recorder.names, (Names{"a-", "b-"}));
}

TEST(ExpatReader, passesOnTheExceptionsOfTheDelegate) {
    Recorder recorder;
    EXPECT_THROW(read("<a><throw/><b/></a>", recorder), std::runtime_error);
    EXPECT_EQ(recorder.names, (Names{"a-", "throw-"}));
}

TEST(ExpatReader, theSizeOfTheBlocksMakesNoDifferenceForDamagedExports) {
    const TemporaryFolder folder;
    ExpatReader::Limits limits;
    limits.token = 300;
    std::minstd_rand chance(2024);
    for (int round = 0; round < 200; ++round) {
        for (const std::string& sample : sampleExports()) {
            const std::string bytes = mutated(sample, chance);
            const auto path = folder.write("export.xml", bytes);
            const Reading usual = readFile(path, ExpatReader::defaultBlockSize, limits);
            for (const std::size_t blockSize : {1U, 2U, 3U, 7U, 61U}) {
                ASSERT_EQ(readFile(path, blockSize, limits), usual) << blockSize << '\n' << bytes;
            }
        }
    }
}

TEST(ExpatReader, aReadErrorIsReturned) {
    // The memory of this process: a regular file whose first byte cannot be read.
    std::error_code error;
    const auto file = InputFile::open("/proc/self/mem", error);
    Recorder recorder;
    EXPECT_EQ(ExpatReader().read(file.value(), recorder),
              (XMLError{0, std::make_error_code(std::errc::io_error)}));
    EXPECT_EQ(recorder.names, Names());
}

TEST(ExpatReader, oneReaderCanReadSeveralFiles) {
    const ExpatReader reader;
    const TemporaryFolder folder;
    std::error_code error;
    const auto good = InputFile::open(folder.write("good", "<a/>"), error);
    const auto bad = InputFile::open(folder.write("bad", "<a>"), error);
    Recorder recorder;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(reader.read(good.value(), recorder), std::nullopt);
        EXPECT_EQ(reader.read(bad.value(), recorder), (XMLError{3, XMLErrorReason::noElement}));
    }
    EXPECT_EQ(recorder.names, (Names{"a-", "a-", "a-", "a-"}));
}

}  // namespace

}  // namespace ambulet
