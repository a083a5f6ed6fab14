#include "platform/DocumentPortal.h"

#include "platform/TestFolder.h"

#include <sys/xattr.h>

namespace ambulet {

namespace {

using namespace Qt::StringLiterals;

void setHostPath(const std::string& path, const std::string& value) {
    ASSERT_EQ(
        ::setxattr(path.c_str(), "user.document-portal.host-path", value.data(), value.size(), 0),
        0);
}

TEST(DocumentPortal, theHostPathIsReadFromThePortalsAttribute) {
    const TestFolder folder;
    const std::string path = bytes(folder.write(u"export.xml"_s));
    setHostPath(path, "/home/walker/Downloads/export.xml");
    EXPECT_EQ(hostPathOfFile(path), "/home/walker/Downloads/export.xml");
}

TEST(DocumentPortal, aHostPathKeepsInvalidUTF8AndLosesATrailingNUL) {
    const TestFolder folder;
    const std::string path = bytes(folder.write(u"export.xml"_s));
    setHostPath(path, std::string("/home/w\xe4lker/export.xml\0", 24));
    EXPECT_EQ(hostPathOfFile(path), "/home/w\xe4lker/export.xml");
}

TEST(DocumentPortal, anotherFileHasNoHostPath) {
    const TestFolder folder;
    const std::string path = bytes(folder.write(u"export.xml"_s));
    EXPECT_EQ(hostPathOfFile(path), std::nullopt);
    EXPECT_EQ(hostPathOfFile(bytes(folder.path(u"gone.xml"_s))), std::nullopt);
    setHostPath(path, "not absolute");
    EXPECT_EQ(hostPathOfFile(path), std::nullopt);
    setHostPath(path, "");
    EXPECT_EQ(hostPathOfFile(path), std::nullopt);
}

}  // namespace

}  // namespace ambulet
