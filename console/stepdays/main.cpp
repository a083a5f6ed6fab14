// stepdays FILE: the days of a health export, newest first, a line each: the date, a tab, the
// steps. What stopped the reading, if anything did, goes to standard error.

#include "import/ExpatReader.h"
#include "import/HealthXMLParser.h"
#include "import/InputFile.h"
#include "text/LocalTime.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>

namespace {

void printDay(const DailySteps& day) {
    const std::chrono::year_month_day date = localDate(day.date().value());
    std::printf("%04d-%02u-%02u\t%lld\n", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<long long>(day.steps()));
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int badUsage = 2;
    if (argc != 2) {
        std::fputs("usage: stepdays FILE\n", stderr);
        return badUsage;
    }
    std::error_code openError;
    const auto file = InputFile::open(argv[1], openError);
    if (!file) {
        std::fprintf(stderr, "%s: %s\n", argv[1], openError.message().c_str());
        return EXIT_FAILURE;
    }
    HealthXMLParser parser;
    const auto error = ExpatReader().read(*file, parser);
    for (const DailySteps& day : parser.days()) {
        printDay(day);
    }
    if (error) {
        std::fprintf(stderr, "stopped at byte %llu: %s\n",
                     static_cast<unsigned long long>(error->byteOffset), error->reason.c_str());
    } else {
        std::fputs("well-formed\n", stderr);
    }
    return EXIT_SUCCESS;
}
