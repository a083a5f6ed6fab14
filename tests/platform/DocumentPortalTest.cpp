#include "platform/DocumentPortal.h"

#include "platform/TestFolder.h"
#include "support/Environment.h"

#include <sys/xattr.h>

namespace ambulet {

namespace {

using namespace Qt::StringLiterals;

constexpr const char* attribute = "user.document-portal.host-path";

// A folder on a file system that stores extended attributes of users. In some versions of Linux, a
// tmpfs does not, and the usual folder for temporary files may be on a tmpfs.
std::string folderWithAttributes() {
    for (const std::string& place :
         {testing::TempDir(), std::string(AMBULET_BUILD), std::string("/var/tmp")}) {
        const ScopedVariable folders("TMPDIR", place);
        const TestFolder folder;
        if (::setxattr(bytes(folder.write(u"file"_s)).c_str(), attribute, "/", 1, 0) == 0) {
            return place;
        }
    }
    ADD_FAILURE() << "neither the folder for temporary files, nor " << AMBULET_BUILD
                  << ", nor /var/tmp has extended attributes";
    return testing::TempDir();
}

class DocumentPortal : public testing::Test {
  protected:
    static void setHostPath(const std::string& path, const std::string& value) {
        ASSERT_EQ(::setxattr(path.c_str(), attribute, value.data(), value.size(), 0), 0);
    }

    const ScopedVariable _place{"TMPDIR", folderWithAttributes()};
    TestFolder _folder;
    const std::string _path = bytes(_folder.write(u"export.xml"_s));
};

TEST_F(DocumentPortal, theHostPathIsReadFromThePortalsAttribute) {
    setHostPath(_path, "/home/walker/Downloads/export.xml");
    EXPECT_EQ(hostPathOfFile(_path), "/home/walker/Downloads/export.xml");
}

TEST_F(DocumentPortal, aHostPathKeepsInvalidUTF8AndLosesATrailingNUL) {
    setHostPath(_path, std::string("/home/w\xe4lker/export.xml\0", 24));
    EXPECT_EQ(hostPathOfFile(_path), "/home/w\xe4lker/export.xml");
}

TEST_F(DocumentPortal, aFileWithoutAnAbsolutePathInTheAttributeHasNoHostPath) {
    EXPECT_EQ(hostPathOfFile(_path), std::nullopt);
    EXPECT_EQ(hostPathOfFile(bytes(_folder.path(u"gone.xml"_s))), std::nullopt);
    setHostPath(_path, "not absolute");
    EXPECT_EQ(hostPathOfFile(_path), std::nullopt);
    setHostPath(_path, "");
    EXPECT_EQ(hostPathOfFile(_path), std::nullopt);
}

}  // namespace

}  // namespace ambulet
