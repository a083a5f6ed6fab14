// fuzz_readers: for every file, expat and ExportReader must give the same result, with all sizes of
// blocks and chunks and all numbers of threads.

#include "import/Comparison.h"
#include "support/TemporaryFolder.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <string_view>

using namespace ambulet;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const TemporaryFolder folder;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    // The input determines the random sizes and the number of threads, so that a failure can be
    // repeated.
    std::minstd_rand chance(static_cast<unsigned>(std::hash<std::string_view>()(bytes)));
    const std::string differences = compareWays(folder.write("export.xml", bytes), chance);
    if (!differences.empty()) {
        std::fputs(differences.c_str(), stderr);
        std::abort();
    }
    return 0;
}
