#include "import/xml/InputFile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ambulet {

namespace {

std::error_code openError(const std::filesystem::path& path) {
    std::error_code error;
    const bool isOpened = InputFile::open(path, error).has_value();
    EXPECT_EQ(isOpened, !error);
    return error;
}

std::string readAt(const InputFile& file, std::uint64_t offset, std::size_t count) {
    std::string buffer(count, '\0');
    std::error_code error;
    buffer.resize(file.read(offset, buffer, error));
    EXPECT_FALSE(error) << error.message();
    return buffer;
}

TEST(InputFile, isReadAtAnyOffset) {
    const TemporaryFolder folder;
    std::error_code error;
    const auto file = InputFile::open(folder.write("file", "0123456789"), error);
    ASSERT_TRUE(file);
    EXPECT_EQ(readAt(*file, 0, 4), "0123");
    EXPECT_EQ(readAt(*file, 7, 2), "78");
    EXPECT_EQ(readAt(*file, 2, 3), "234");
    EXPECT_EQ(readAt(*file, 8, 10), "89");
    EXPECT_EQ(readAt(*file, 10, 10), "");
    EXPECT_EQ(readAt(*file, 1000, 10), "");
}

TEST(InputFile, aMissingFileIsNotOpened) {
    const TemporaryFolder folder;
    EXPECT_EQ(openError(folder.path() / "none"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(openError(folder.path() / "none" / "none"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(openError(""), std::errc::no_such_file_or_directory);
}

TEST(InputFile, aFolderIsNotOpened) {
    const TemporaryFolder folder;
    EXPECT_EQ(openError(folder.path()), std::errc::is_a_directory);
}

TEST(InputFile, aPipeIsNotOpenedAndDoesNotBlock) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(openError(path), std::errc::not_supported);
}

TEST(InputFile, aSocketIsNotOpened) {
    const TemporaryFolder folder;
    const std::string path = folder.path() / "socket";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(openError(path), std::errc::no_such_device_or_address);
    close(descriptor);
}

TEST(InputFile, aDeviceIsNotOpened) {
    EXPECT_EQ(openError("/dev/zero"), std::errc::not_supported);
    EXPECT_EQ(openError("/dev/null"), std::errc::not_supported);
}

TEST(InputFile, aLinkToAFileIsOpened) {
    const TemporaryFolder folder;
    folder.write("file", "content");
    std::filesystem::create_symlink("file", folder.path() / "link");
    std::error_code error;
    const auto file = InputFile::open(folder.path() / "link", error);
    ASSERT_TRUE(file);
    EXPECT_EQ(readAt(*file, 0, 100), "content");
}

TEST(InputFile, aFileWithoutReadPermissionIsNotOpened) {
    const TemporaryFolder folder;
    const auto path = folder.write("file", "content");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    // Root may read every file, so the file is opened in a process that gives up root's rights.
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        const bool isOrdinary = geteuid() != 0 || setuid(nobody) == 0;
        std::error_code error;
        const bool isOpened = InputFile::open(path, error).has_value();
        _exit(isOrdinary && !isOpened && error == std::errc::permission_denied ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(InputFile, canBeMoved) {
    const TemporaryFolder folder;
    std::error_code error;
    auto first = InputFile::open(folder.write("1", "one"), error);
    auto second = InputFile::open(folder.write("2", "two"), error);
    ASSERT_TRUE(first && second);
    *first = std::move(*second);
    second.reset();
    EXPECT_EQ(readAt(*first, 0, 10), "two");
}

TEST(InputFile, aFileThatIsTruncatedWhileOpenEndsAtItsNewSize) {
    const TemporaryFolder folder;
    const auto path = folder.write("file", "0123456789");
    std::error_code error;
    const auto file = InputFile::open(path, error);
    ASSERT_TRUE(file);
    std::filesystem::resize_file(path, 5);
    EXPECT_EQ(readAt(*file, 0, 10), "01234");
    EXPECT_EQ(readAt(*file, 8, 10), "");
}

}  // namespace

}  // namespace ambulet
