#include "Validity.h"

#include <expat.h>

#include <cstdlib>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>

namespace makeexport {

namespace {

using Names = std::set<std::string>;

struct Declared {
    Names children;
    Names attributes;
    Names required;
};

void collectNames(const XML_Content& model, Names& names) {
    if (model.name != nullptr) {
        names.insert(model.name);
    }
    for (unsigned i = 0; i < model.numchildren; ++i) {
        collectNames(model.children[i], names);
    }
}

class Validator {
  public:
    void declareElement(const std::string& name, const XML_Content& model) {
        collectNames(model, _declared[name].children);
    }

    void declareAttribute(const std::string& element, const std::string& name,
                          const std::string& type, bool required) {
        if (type != "CDATA") {
            add({element, " ", name, " is ", type});
        }
        _declared[element].attributes.insert(name);
        if (required) {
            _declared[element].required.insert(name);
        }
    }

    void start(const std::string& name, const char** attributes) {
        const Declared& declared = _declared[name];
        if (!_open.empty() && !_declared[_open.back()].children.contains(name)) {
            add({name, " in ", _open.back()});
        }
        Names present;
        for (; *attributes != nullptr; attributes += 2) {
            present.insert(attributes[0]);
            if (!declared.attributes.contains(attributes[0])) {
                add({name, " has an undeclared ", attributes[0]});
            }
        }
        for (const std::string& required : declared.required) {
            if (!present.contains(required)) {
                add({name, " has no ", required});
            }
        }
        _open.push_back(name);
    }

    void end() { _open.pop_back(); }

    void add(std::initializer_list<std::string_view> parts) {
        std::string text;
        for (const std::string_view part : parts) {
            text += part;
        }
        _found.insert(text);
    }

    std::vector<std::string> found() const { return {_found.begin(), _found.end()}; }

  private:
    std::map<std::string, Declared> _declared;
    std::vector<std::string> _open;
    Names _found;
};

Validator& validator(void* data) {
    return *static_cast<Validator*>(data);
}

}  // namespace

std::vector<std::string> violations(std::string_view document) {
    Validator found;
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> owner(
        XML_ParserCreate(nullptr), XML_ParserFree);
    const XML_Parser parser = owner.get();
    XML_SetUserData(parser, &found);
    XML_SetElementDeclHandler(parser, [](void* to, const char* name, XML_Content* model) {
        validator(to).declareElement(name, *model);
        std::free(model);
    });
    XML_SetAttlistDeclHandler(parser, [](void* to, const char* element, const char* name,
                                         const char* type, const char*, int required) {
        validator(to).declareAttribute(element, name, type, required != 0);
    });
    XML_SetElementHandler(
        parser,
        [](void* to, const char* name, const char** attributes) {
            validator(to).start(name, attributes);
        },
        [](void* to, const char*) { validator(to).end(); });
    if (XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE) !=
        XML_STATUS_OK) {
        found.add({XML_ErrorString(XML_GetErrorCode(parser))});
    }
    return found.found();
}

}  // namespace makeexport
