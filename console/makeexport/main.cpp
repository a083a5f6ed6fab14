#include "makeexport/Arguments.h"
#include "makeexport/Export.h"
#include "makeexport/File.h"

#include <cstdio>

namespace makeexport {

namespace {

constexpr int cannotWrite = 1;
constexpr int wrongArguments = 2;

/// Says why `path` cannot be written, if so.
bool isFine(const std::string& path, std::error_code error) {
    if (error) {
        std::fprintf(stderr, "makeexport: cannot write %s: %s\n", path.c_str(),
                     error.message().c_str());
    }
    return !error;
}

bool writeSums(const StepSums& sums, const SumsWanted& wanted, File& file) {
    return isFine(wanted.path, file.write(sumLines(sums.byDay(wanted.zone)))) &&
           isFine(wanted.path, file.close());
}

int run(const Arguments& arguments) {
    // All files first: one that cannot be written shows before the work and not after it.
    File exportFile;
    if (!isFine(arguments.path, exportFile.open(arguments.path))) {
        return cannotWrite;
    }
    std::vector<File> sumFiles(arguments.sums.size());
    for (std::size_t i = 0; i < sumFiles.size(); ++i) {
        const std::string& path = arguments.sums[i].path;
        if (!isFine(path, sumFiles[i].open(path))) {
            return cannotWrite;
        }
    }

    StepSums sums;
    Output out([&](std::string_view block) { return exportFile.write(block); });
    writeExport(arguments.seed, arguments.size, out, sums);
    if (!isFine(arguments.path, out.error()) || !isFine(arguments.path, exportFile.close())) {
        return cannotWrite;
    }
    for (std::size_t i = 0; i < sumFiles.size(); ++i) {
        if (!writeSums(sums, arguments.sums[i], sumFiles[i])) {
            return cannotWrite;
        }
    }
    return 0;
}

}  // namespace

}  // namespace makeexport

using namespace makeexport;

int main(int argc, char** argv) {
    const auto read = readArguments({argv + 1, argv + argc});
    if (const auto* bad = std::get_if<BadArguments>(&read)) {
        std::fprintf(stderr, "makeexport: %s; try makeexport --help\n", bad->reason.c_str());
        return wrongArguments;
    }
    const auto* arguments = std::get_if<Arguments>(&read);
    if (arguments->help) {
        std::fputs(helpText(), stdout);
        return 0;
    }
    return run(*arguments);
}
