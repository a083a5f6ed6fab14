// replay_NAME COUNT FOLDER: runs the source of fuzz_NAME on the seeds in FOLDER, and then on COUNT
// changed copies of them, which are the same in each run. Needs neither libFuzzer nor clang, so the
// tests can use it.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Chance = std::minstd_rand;

const std::string* running = nullptr;

void run(const std::string& input) {
    running = &input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
}

void printInput(int) {
    for (const char byte : *running) {
        std::fprintf(stderr, byte >= ' ' && byte <= '~' ? "%c" : "\\x%02x",
                     static_cast<unsigned char>(byte));
    }
    std::fputc('\n', stderr);
}

std::vector<std::string> seedsIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    std::vector<std::string> seeds;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return seeds;
}

// Changes a byte, removes or inserts bytes, inserts a piece of a seed, or replaces the end of
// `text` by the end of a seed.
void mutate(std::string& text, const std::vector<std::string>& seeds, Chance& chance) {
    const std::size_t at = text.empty() ? 0 : chance() % text.size();
    const auto byte = static_cast<char>(chance() % 256);
    const std::string& other = seeds[chance() % seeds.size()];
    const std::size_t from = other.empty() ? 0 : chance() % other.size();
    switch (chance() % 5) {
    case 0:
        text.insert(at, 1, byte);
        break;
    case 1:
        text.erase(at, 1 + chance() % 4);
        break;
    case 2:
        text.insert(at, other.substr(from, 1 + chance() % 16));
        break;
    case 3:
        text.replace(at, text.size(), other.substr(from));
        break;
    default:
        if (!text.empty()) {
            text[at] = chance() % 2 == 0 ? byte : static_cast<char>(text[at] ^ (1 << chance() % 8));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto seeds = argc == 3 ? seedsIn(argv[2]) : std::vector<std::string>();
    if (seeds.empty()) {
        std::fputs("usage: replay_NAME COUNT FOLDER-OF-SEEDS\n", stderr);
        return 2;
    }
    std::signal(SIGABRT, printInput);
    std::ranges::for_each(seeds, run);
    Chance chance(1);
    const unsigned long count = std::strtoul(argv[1], nullptr, 10);
    for (unsigned long i = 0; i < count; ++i) {
        std::string input = seeds[chance() % seeds.size()];
        for (unsigned long changes = 1 + chance() % 4; changes > 0; --changes) {
            mutate(input, seeds, chance);
        }
        run(input);
    }
    return 0;
}
