// compare_mutants FIRST COUNT [small|medium|large|huge]: reads COUNT mutants of sample exports in
// several ways each. If the results differ, prints them and saves the mutant in the working
// directory. The mutants have the numbers from FIRST on. With the same last argument, the same
// number gives the same mutant.
//
// Without sanitizers, this program reads many more mutants than fuzz_readers in the same time.

#include "import/Comparison.h"
#include "import/Mutants.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>

using namespace ambulet;

namespace {

std::optional<MutantSize> sizeOf(std::string_view name) {
    static const std::map<std::string_view, MutantSize> sizes = {{"small", MutantSize::small},
                                                                 {"medium", MutantSize::medium},
                                                                 {"large", MutantSize::large},
                                                                 {"huge", MutantSize::huge}};
    const auto found = sizes.find(name);
    return found == sizes.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

int main(int argc, char** argv) {
    const std::optional<MutantSize> onlySize = argc == 4 ? sizeOf(argv[3]) : std::nullopt;
    if (argc < 3 || argc > 4 || (argc == 4 && !onlySize)) {
        std::fputs("usage: compare_mutants FIRST COUNT [small|medium|large|huge]\n", stderr);
        return 2;
    }
    const std::uint64_t first = std::strtoull(argv[1], nullptr, 10);
    const std::uint64_t count = std::strtoull(argv[2], nullptr, 10);
    constexpr std::uint64_t progress = 10'000;
    const TemporaryFolder folder;
    std::array<std::uint64_t, 4> bySize{};
    std::uint64_t different = 0;
    for (std::uint64_t done = 0; done < count; ++done) {
        const std::uint64_t number = first + done;
        std::seed_seq seeds{static_cast<std::uint32_t>(number),
                            static_cast<std::uint32_t>(number >> 32)};
        std::minstd_rand chance(seeds);
        const MutantSize size = onlySize ? *onlySize : mutantSize(chance);
        const auto path = folder.write("export.xml", mutant(chance, size));
        ++bySize[static_cast<std::size_t>(size)];
        const std::string differences = compareWays(path, chance);
        if (!differences.empty()) {
            ++different;
            const std::string name = "different-" + std::to_string(number) + ".xml";
            std::filesystem::copy_file(path, name,
                                       std::filesystem::copy_options::overwrite_existing);
            std::printf("%s\n%s", name.c_str(), differences.c_str());
            std::fflush(stdout);
        }
        if ((done + 1) % progress == 0 || done + 1 == count) {
            std::printf("%llu read: %llu small, %llu medium, %llu large, %llu huge; %llu differ\n",
                        static_cast<unsigned long long>(done + 1),
                        static_cast<unsigned long long>(bySize[0]),
                        static_cast<unsigned long long>(bySize[1]),
                        static_cast<unsigned long long>(bySize[2]),
                        static_cast<unsigned long long>(bySize[3]),
                        static_cast<unsigned long long>(different));
            std::fflush(stdout);
        }
    }
    return different == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
