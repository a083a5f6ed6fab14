#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <utility>

namespace ambulet {

/// Sets an environment variable, or removes it if there is no value. The destructor restores it.
class ScopedVariable {
  public:
    ScopedVariable(std::string name, const std::optional<std::string>& value)
        : _name(std::move(name)) {
        if (const char* old = std::getenv(_name.c_str())) {
            _old = old;
        }
        set(value);
    }
    ~ScopedVariable() { set(_old); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    void set(const std::optional<std::string>& value) {
        if (value) {
            setenv(_name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(_name.c_str());
        }
    }

    std::string _name;
    std::optional<std::string> _old;
};

/// Sets the time zone of the process, such as "Europe/Berlin". The destructor restores it.
class ScopedTimeZone {
  public:
    explicit ScopedTimeZone(const std::string& name) {
        _variable.emplace("TZ", name);
        tzset();
    }
    ~ScopedTimeZone() {
        _variable.reset();
        tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

  private:
    std::optional<ScopedVariable> _variable;
};

/// Sets the user's locale, such as "de_DE.UTF-8". The destructor restores it.
class ScopedLocale {
  public:
    explicit ScopedLocale(const std::string& name) : _variable("LC_ALL", name) {}

  private:
    ScopedVariable _variable;
};

}  // namespace ambulet
