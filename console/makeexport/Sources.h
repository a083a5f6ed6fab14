#pragma once

#include "makeexport/Random.h"

#include <chrono>
#include <string>
#include <string_view>

namespace makeexport {

/// What kind of thing records.
enum class Maker { Phone, Watch, Pedometer, Scale, Cuff, Diary };

/// A device or an app as it signs its records from a day on, until its next model or version. The
/// texts stand in XML as they are.
struct Source {
    Maker maker;
    std::chrono::local_days since;
    std::string_view name;
    std::string_view version;
    std::string_view device;    // how it begins, without the address; empty: the source names none
    std::string_view hardware;  // empty: the device names neither this nor its software
};

/// The source of a kind that is in use on a day; the first of its kind on earlier days. The
/// reference stays valid for the whole run.
const Source& sourceOn(std::chrono::local_days day, Maker maker);

/// The attributes `sourceName`, `sourceVersion` and, where there is one, `device`. `random` makes
/// up the device's address in memory.
void appendSource(std::string& text, const Source& source, Random& random);

}  // namespace makeexport
