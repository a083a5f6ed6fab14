#include "Reading.h"

#include "support/Environment.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <memory>

namespace makeexport {

namespace {

class Handler {
  public:
    void declareElement(const std::string& name, const XML_Content& model) {
        collectNames(model, _children[name]);
    }

    void declareAttribute(const std::string& element, const std::string& name, bool isRequired) {
        _attributes[element][name] = isRequired;
    }

    void start(const std::string& name, const char** attributes) {
        Reading::Record record{_open.empty() ? "" : _open.back(), "", {}};
        for (; *attributes != nullptr; attributes += 2) {
            record.order += std::string(attributes[0]) + ' ';
            record.attributes[attributes[0]] = attributes[1];
        }
        validate(name, record.attributes);
        if (_open.size() == 1 && (reading.children.empty() || reading.children.back() != name)) {
            reading.children.push_back(name);
        }
        if (name == "Record") {
            reading.records.push_back(record);
        }
        _open.push_back(name);
    }

    void end() { _open.pop_back(); }

    Reading reading;

  private:
    static void collectNames(const XML_Content& model, std::set<std::string>& names) {
        if (model.name != nullptr) {
            names.insert(model.name);
        }
        for (unsigned i = 0; i < model.numchildren; ++i) {
            collectNames(model.children[i], names);
        }
    }

    void validate(const std::string& name, const Reading::Attributes& attributes) {
        if (!_open.empty() && !_children[_open.back()].contains(name)) {
            reading.violations.insert(name + " in " + _open.back());
        }
        for (const auto& [attribute, value] : attributes) {
            if (!_attributes[name].contains(attribute)) {
                reading.violations.insert(name + " has an undeclared " + attribute);
            }
        }
        for (const auto& [attribute, isRequired] : _attributes[name]) {
            if (isRequired && !attributes.contains(attribute)) {
                reading.violations.insert(name + " has no " + attribute);
            }
        }
    }

    std::map<std::string, std::set<std::string>> _children;
    std::map<std::string, std::map<std::string, bool>> _attributes;  // true if required
    std::vector<std::string> _open;
};

Handler& handler(void* data) {
    return *static_cast<Handler*>(data);
}

std::time_t instantOf(const std::string& date) {
    std::tm tm{};
    const char* end = strptime(date.c_str(), "%Y-%m-%d %H:%M:%S %z", &tm);
    EXPECT_TRUE(end != nullptr && *end == '\0') << date;
    const long offset = tm.tm_gmtoff;
    return timegm(&tm) - offset;
}

bool hasMidnight(std::tm day) {
    day.tm_hour = day.tm_min = day.tm_sec = 0;
    day.tm_isdst = -1;
    const int ofMonth = day.tm_mday;
    return mktime(&day) != -1 && day.tm_hour == 0 && day.tm_mday == ofMonth;
}

}  // namespace

Reading readExport(std::string_view text) {
    Handler found;
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> owner(
        XML_ParserCreate(nullptr), XML_ParserFree);
    const XML_Parser parser = owner.get();
    XML_SetUserData(parser, &found);
    XML_SetElementDeclHandler(parser, [](void* to, const char* name, XML_Content* model) {
        handler(to).declareElement(name, *model);
        std::free(model);
    });
    XML_SetAttlistDeclHandler(
        parser, [](void* to, const char* element, const char* name, const char*, const char*,
                   int required) { handler(to).declareAttribute(element, name, required != 0); });
    XML_SetElementHandler(
        parser,
        [](void* to, const char* name, const char** attributes) {
            handler(to).start(name, attributes);
        },
        [](void* to, const char*) { handler(to).end(); });
    if (XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE) != XML_STATUS_OK) {
        found.reading.violations.insert(XML_ErrorString(XML_GetErrorCode(parser)));
    }
    return found.reading;
}

std::string sumsOf(const Reading& reading, const std::string& zone) {
    const ambulet::ScopedTimeZone inForce(zone);
    std::map<std::string, long long, std::greater<>> days;
    for (const Reading::Record& record : reading.records) {
        if (record.attributes.at("type") != "HKQuantityTypeIdentifierStepCount") {
            continue;
        }
        const std::time_t start = instantOf(record.attributes.at("startDate"));
        std::tm tm{};
        localtime_r(&start, &tm);
        char day[16];
        std::strftime(day, sizeof day, "%Y-%m-%d", &tm);
        if (hasMidnight(tm)) {
            days[day] += std::stoll(record.attributes.at("value"));
        }
    }
    std::string text;
    for (const auto& [day, sum] : days) {
        text += day + '\t' + std::to_string(sum) + '\n';
    }
    return text;
}

}  // namespace makeexport
