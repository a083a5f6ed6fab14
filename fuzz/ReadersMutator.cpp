// How fuzz_readers makes an input: it is a mutant of a sample export, or is made from earlier
// inputs and the seeds, by libFuzzer or by `mutated`.

#include "import/Mutants.h"
#include "import/Mutations.h"

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

using namespace ambulet;

extern "C" {
size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);
size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed);
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
