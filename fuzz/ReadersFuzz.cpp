// fuzz_readers: whatever a file holds, the fast road and expat come to the same. Every input is one
// of the sample exports, spoilt, or what libFuzzer makes of those before.

#include "import/Mutations.h"
#include "import/Reading.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

using namespace ambulet;

extern "C" {
size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed);
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const TemporaryFolder folder;
    std::string differences;
    readByAll(folder.write("export.xml", {reinterpret_cast<const char*>(data), size}), differences);
    if (!differences.empty()) {
        std::fputs(differences.c_str(), stderr);
        std::abort();
    }
    return 0;
}

size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed) {
    std::minstd_rand chance(seed);
    const auto choice = chance() % 8;
    if (choice == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    const auto& samples = sampleExports();
    const std::string base = choice < 5 ? samples[chance() % samples.size()]
                                        : std::string(reinterpret_cast<const char*>(data), size);
    const std::string bytes = mutated(base, chance);
    return bytes.copy(reinterpret_cast<char*>(data), maxSize);
}
