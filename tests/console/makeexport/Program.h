#pragma once

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/wait.h>

namespace makeexport {

inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Ended {
    int status;
    std::string out;
    std::string err;
};

/// Runs makeexport and waits until it ends. A shell parses the arguments.
inline Ended run(const std::string& arguments) {
    const ambulet::TemporaryFolder folder;
    const std::string out = folder.path() / "out";
    const std::string err = folder.path() / "err";
    const int status = std::system((MAKEEXPORT " " + arguments + " >" + out + " 2>" + err).c_str());
    EXPECT_TRUE(WIFEXITED(status));
    return {WEXITSTATUS(status), contentOf(out), contentOf(err)};
}

}  // namespace makeexport
