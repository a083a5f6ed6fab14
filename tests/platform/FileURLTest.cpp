#include "platform/FileURL.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace ambulet {

namespace {

class FileURLTest : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return _folder.path().string() + '/' + name; }
    std::string found(const std::string& name) const {
        return FileURL(QString::fromStdString(path(name))).path;
    }
    std::string write(const std::string& name) const { return _folder.write(name, ""); }

    TemporaryFolder _folder;
};

TEST_F(FileURLTest, theTextIsEncodedInUtf8) {
    EXPECT_EQ(found("März/export.xml"), path("März/export.xml"));
}

TEST_F(FileURLTest, aReplacementCharacterMatchesBytesThatAreNotUtf8) {
    write("Marz.xml");
    write("M\xe4r.xml");
    const std::string file = write("M\xe4rz.xml");
    EXPECT_EQ(found("M\uFFFDrz.xml"), file);
}

TEST_F(FileURLTest, theFirstByNameOfSeveralMatchingFilesIsTaken) {
    // With so many files, the folder is unlikely to list M\xe4.xml first by chance.
    for (char byte = '\xff'; byte >= '\xe4'; --byte) {
        write(std::string("M") + byte + ".xml");
    }
    EXPECT_EQ(found("M\uFFFD.xml"), path("M\xe4.xml"));
}

TEST_F(FileURLTest, aFileWithExactlyThatNameIsPreferred) {
    write("M\xe4rz.xml");
    const std::string file = write("M\uFFFDrz.xml");
    EXPECT_EQ(found("M\uFFFDrz.xml"), file);
}

TEST_F(FileURLTest, aReplacementCharacterMatchesInNamesOfFoldersToo) {
    std::filesystem::create_directory(path("\xff"));
    const std::string file = write("\xff/\xfe.xml");
    EXPECT_EQ(found("\uFFFD/\uFFFD.xml"), file);
}

TEST_F(FileURLTest, thePathIsTheTextIfNoFileMatches) {
    EXPECT_EQ(found("\uFFFD/\uFFFD.xml"), path("\uFFFD/\uFFFD.xml"));
}

}  // namespace

}  // namespace ambulet
