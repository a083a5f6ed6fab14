// stepdays [--threads N] [--reader expat|fast] FILE: prints the days of a health export, newest
// first. One line for each day: the date, a tab, the steps. To standard error it prints the first
// error in the file, or "well-formed". --reader expat reads with expat alone; fast, the default,
// reads with the same code as the application.

#include "import/ExportReader.h"
#include "import/HealthXMLParser.h"
#include "import/expat/ExpatReader.h"
#include "import/xml/InputFile.h"
#include "text/LocalTime.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace ambulet {

namespace {

struct Arguments {
    std::string path;
    bool throughExpat = false;
    unsigned threads = ExportReader::usualThreads();
};

std::optional<unsigned> threadCount(std::string_view text) {
    constexpr unsigned most = 64;
    unsigned count = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), count);
    const bool isWhole = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isWhole && 1 <= count && count <= most ? std::optional(count) : std::nullopt;
}

std::optional<Arguments> understood(const std::vector<std::string_view>& words) {
    Arguments arguments;
    std::size_t at = 0;
    for (; at + 2 < words.size(); at += 2) {
        const std::string_view value = words[at + 1];
        if (words[at] == "--threads" && threadCount(value)) {
            arguments.threads = *threadCount(value);
        } else if (words[at] == "--reader" && (value == "expat" || value == "fast")) {
            arguments.throughExpat = value == "expat";
        } else {
            return std::nullopt;
        }
    }
    if (at + 1 != words.size()) {
        return std::nullopt;
    }
    arguments.path = words[at];
    return arguments;
}

void printDay(const DailySteps& day) {
    const std::chrono::year_month_day date = localDate(day.date().value());
    std::printf("%04d-%02u-%02u\t%lld\n", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<long long>(day.steps()));
}

std::vector<DailySteps> readDays(const InputFile& file, const Arguments& arguments,
                                 std::optional<XMLError>& error) {
    HealthXMLParser parser;
    error = arguments.throughExpat ? ExpatReader().read(file, parser)
                                   : parser.parse(file, {.threads = arguments.threads});
    return parser.days();
}

}  // namespace

}  // namespace ambulet

using namespace ambulet;

int main(int argc, char** argv) {
    constexpr int badUsage = 2;
    const auto arguments = understood({argv + 1, argv + argc});
    if (!arguments) {
        std::fputs("usage: stepdays [--threads N] [--reader expat|fast] FILE\n", stderr);
        return badUsage;
    }
    std::error_code openError;
    const auto file = InputFile::open(arguments->path, openError);
    if (!file) {
        std::fprintf(stderr, "%s: %s\n", arguments->path.c_str(), openError.message().c_str());
        return EXIT_FAILURE;
    }
    std::optional<XMLError> error;
    for (const DailySteps& day : readDays(*file, *arguments, error)) {
        printDay(day);
    }
    if (error) {
        std::fprintf(stderr, "stopped at byte %llu: %s\n",
                     static_cast<unsigned long long>(error->byteOffset),
                     error->reason.message().c_str());
    } else {
        std::fputs("well-formed\n", stderr);
    }
    return EXIT_SUCCESS;
}
