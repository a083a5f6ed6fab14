#include "import/expat/ExpatDocument.h"

#include "import/xml/InputFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ambulet {

namespace {

// Records the names of the tags.
class Recorder : public XMLReaderDelegate {
  public:
    void didStartElement(std::string_view name, const XMLAttributes& /*attributes*/) override {
        names.emplace_back(name);
    }

    std::vector<std::string> names;
};

using Names = std::vector<std::string>;

class ExpatDocumentTest : public testing::Test {
  protected:
    ExpatDocument& open(std::string_view bytes) {
        std::error_code error;
        _file = InputFile::open(_folder.write("file", bytes), error);
        _document.emplace(_file.value(), _recorder, 4096);
        _recorder.names.clear();
        return *_document;
    }

    TemporaryFolder _folder;
    std::optional<InputFile> _file;
    Recorder _recorder;
    std::optional<ExpatDocument> _document;
};

TEST_F(ExpatDocumentTest, aPlainPrologEndsWithTheRootsStartTag) {
    for (const std::string before :
         {"", "\n<!-- a -->", "\xEF\xBB\xBF", "<?xml version='1.0' encoding='utf-8'?>",
          "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST b c CDATA #REQUIRED>]>",
          "<!DOCTYPE a [ malformed ]>"}) {
        const auto prolog = open(before + "<a b='>'>\n<c/></a>").readPlainProlog();
        ASSERT_TRUE(prolog) << before;
        EXPECT_EQ(prolog->rootName, "a");
        EXPECT_EQ(prolog->end, before.size() + 9) << before;
        EXPECT_EQ(_recorder.names, Names{"a"});
    }
}

TEST_F(ExpatDocumentTest, aDocumentWithoutAPlainPrologIsReadToTheEnd) {
    for (const std::string before :
         {"<?xml version='1.1'?>", "<?xml version='1.0' encoding='US-ASCII'?>",
          "<!DOCTYPE a SYSTEM 'b'>", "<!DOCTYPE a [<!ENTITY b 'c'>]>",
          "<!DOCTYPE a [<!ENTITY % b 'c'>]>", "<!DOCTYPE a [%b;]>",
          "<!DOCTYPE a [<!ATTLIST c d CDATA 'e'>]>", "<!DOCTYPE a [<!ATTLIST c d ID #IMPLIED>]>"}) {
        ExpatDocument& document = open(before + "<a><c/></a>");
        EXPECT_EQ(document.readPlainProlog(), std::nullopt) << before;
        EXPECT_EQ(document.read(), std::nullopt) << before;
        EXPECT_EQ(_recorder.names, (Names{"a", "c"})) << before;
    }
}

TEST_F(ExpatDocumentTest, aDocumentWithAnEmptyRootOrALongPrologIsReadToTheEnd) {
    for (const std::string& bytes :
         {std::string("<a/>"), "<!--" + std::string(70'000, 'x') + "--><a></a>"}) {
        ExpatDocument& document = open(bytes);
        EXPECT_EQ(document.readPlainProlog(), std::nullopt);
        EXPECT_EQ(document.read(), std::nullopt);
        EXPECT_EQ(_recorder.names, Names{"a"});
    }
}

TEST_F(ExpatDocumentTest, anErrorInThePrologIsTheResultOfRead) {
    ExpatDocument& document = open("<!-- a --> junk <a/>");
    EXPECT_EQ(document.readPlainProlog(), std::nullopt);
    EXPECT_EQ(document.read(), (XMLError{11, XMLErrorReason::syntax}));
    EXPECT_EQ(_recorder.names, Names());
}

TEST_F(ExpatDocumentTest, continuesWhereAnotherReaderStopped) {
    const std::string bytes = "<!DOCTYPE a [ malformed ]><a><b><c/><d/></b><e/></b></a>";
    ExpatDocument& document = open(bytes);
    ASSERT_TRUE(document.readPlainProlog());
    EXPECT_EQ(document.readFrom(bytes.find("<d/>"), "<b>", 0),
              (XMLError{bytes.find("</b></a>") + 2, XMLErrorReason::mismatchedTag}));
    EXPECT_EQ(_recorder.names, (Names{"a", "d", "e"}));
}

TEST_F(ExpatDocumentTest, theReserveIsSubtractedFromTheMemoryLimit) {
    const std::string tag = "<b c='" + std::string(500'000, 'x') + "'/>";
    for (const std::size_t reserve : {0U, 3U * 1024 * 1024, 4U * 1024 * 1024 - 300'000}) {
        ExpatDocument& document = open("<a>" + tag + "</a>");
        ASSERT_TRUE(document.readPlainProlog());
        const auto error = document.readFrom(3, "", reserve);
        EXPECT_EQ(error.has_value(), reserve > 3U * 1024 * 1024) << reserve;
        if (error) {
            EXPECT_EQ(*error, (XMLError{3, XMLErrorReason::outOfMemory}));
        }
    }
}

}  // namespace

}  // namespace ambulet
