#include "Reading.h"

#include "support/Environment.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>

namespace makeexport {

using namespace ambulet;

namespace {

void addOnce(std::vector<std::string>& list, const std::string& text) {
    if (std::ranges::find(list, text) == list.end()) {
        list.push_back(text);
    }
}

void addRun(std::vector<std::string>& list, const std::string& text) {
    if (list.empty() || list.back() != text) {
        list.push_back(text);
    }
}

class Handler {
  public:
    explicit Handler(Reading& reading) : _reading(reading) {}

    void start(const std::string& name, const char** attributes) {
        ++_reading.elements[name];
        if (_open.size() == 1) {
            addRun(_reading.children, name);
        }
        if (name == "Record") {
            record(attributes);
        }
        _open.push_back(name);
    }

    void end() { _open.pop_back(); }

  private:
    void record(const char** attributes) {
        std::map<std::string, std::string> values;
        std::string order;
        for (; *attributes != nullptr; attributes += 2) {
            order += std::string(order.empty() ? "" : " ") + attributes[0];
            values[attributes[0]] = attributes[1];
        }
        addOnce(_reading.attributeOrders, order);
        addOnce(_reading.sourceNames, values["sourceName"]);
        if (_open.size() == 1) {
            ++_reading.topLevelTypes[values["type"]];
            addRun(_reading.recordTypes, values["type"]);
        }
        if (values["type"] == "HKQuantityTypeIdentifierStepCount") {
            _reading.steps.push_back({values["startDate"], values["value"], _open.back()});
        }
    }

    Reading& _reading;
    std::vector<std::string> _open;
};

std::time_t instantOf(const std::string& date) {
    std::tm tm{};
    int offset = 0;
    char sign = 0;
    const int fields =
        std::sscanf(date.c_str(), "%4d-%2d-%2d %2d:%2d:%2d %c%4d", &tm.tm_year, &tm.tm_mon,
                    &tm.tm_mday, &tm.tm_hour, &tm.tm_min, &tm.tm_sec, &sign, &offset);
    EXPECT_EQ(fields, 8) << date;
    EXPECT_EQ(date.size(), 25U) << date;
    EXPECT_TRUE(sign == '+' || sign == '-') << date;
    tm.tm_year -= 1900;
    tm.tm_mon -= 1;
    const int ahead = (offset / 100 * 60 + offset % 100) * 60;
    return timegm(&tm) - (sign == '-' ? -ahead : ahead);
}

}  // namespace

Reading readExport(std::string_view text) {
    Reading reading;
    Handler handler(reading);
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    XML_SetUserData(parser.get(), &handler);
    XML_SetElementHandler(
        parser.get(),
        [](void* to, const char* name, const char** attributes) {
            static_cast<Handler*>(to)->start(name, attributes);
        },
        [](void* to, const char*) { static_cast<Handler*>(to)->end(); });
    if (XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) !=
        XML_STATUS_OK) {
        reading.error = XML_ErrorString(XML_GetErrorCode(parser.get()));
    }
    return reading;
}

std::string sumsOf(const std::vector<Reading::StepRecord>& steps, const std::string& zone) {
    const ScopedTimeZone inForce(zone);
    std::map<std::string, long long, std::greater<>> days;
    for (const Reading::StepRecord& record : steps) {
        const std::time_t start = instantOf(record.startDate);
        std::tm tm{};
        localtime_r(&start, &tm);
        char day[16];
        std::strftime(day, sizeof day, "%Y-%m-%d", &tm);
        days[day] += std::stoll(record.value);
    }
    std::string text;
    for (const auto& [day, sum] : days) {
        text += day + '\t' + std::to_string(sum) + '\n';
    }
    return text;
}

}  // namespace makeexport
