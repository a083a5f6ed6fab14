// fuzz_readers: for every file, expat and ExportReader must give the same result, with all sizes of
// blocks and chunks and all numbers of threads. An input is a mutant of a sample export, or is made
// from earlier inputs and the seeds, by libFuzzer or by `mutated`.

#include "import/Comparison.h"
#include "import/Mutants.h"
#include "import/Mutations.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
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

size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed) {
    std::minstd_rand chance(seed);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::string result;
    switch (chance() % 4) {
    case 0:
        return LLVMFuzzerMutate(data, size, maxSize);
    case 1:
        result = mutated(std::string(bytes), chance);
        break;
    default:
        result = mutant(chance, mutantSize(chance));
    }
    return result.copy(reinterpret_cast<char*>(data), maxSize);
}
