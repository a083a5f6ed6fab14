#include "makeexport/Sources.h"

#include "makeexport/Text.h"

#include <algorithm>
#include <array>

namespace makeexport {

using namespace std::chrono;

namespace {

using enum Maker;

constexpr local_days on(int y, unsigned m, unsigned d) {
    return local_days(year_month_day(year(y), month(m), day(d)));
}

// A typographic apostrophe; in the watch's name also a no-break space.
constexpr std::string_view phone = "Zoë’s iPhone";
constexpr std::string_view watch = "Zoë’s Apple\u00a0Watch";

constexpr std::string_view iPhone = "name:iPhone, manufacturer:Apple Inc., model:iPhone";
constexpr std::string_view appleWatch = "name:Apple Watch, manufacturer:Apple Inc., model:Watch";

// Of each kind in the order of their days.
constexpr std::array sources = {
    Source{Phone, on(2015, 10, 1), phone, "9.0.2", iPhone, "iPhone7,2"},
    Source{Phone, on(2016, 9, 20), phone, "10.1.1", iPhone, "iPhone7,2"},
    Source{Phone, on(2017, 11, 3), phone, "11.2", iPhone, "iPhone10,4"},
    Source{Phone, on(2018, 10, 2), phone, "12.1.4", iPhone, "iPhone10,4"},
    Source{Phone, on(2019, 10, 15), phone, "13.3", iPhone, "iPhone10,4"},
    Source{Phone, on(2020, 11, 13), phone, "14.2.1", iPhone, "iPhone13,1"},
    Source{Phone, on(2021, 10, 1), phone, "15.1", iPhone, "iPhone13,1"},
    Source{Phone, on(2022, 9, 28), phone, "16.0.2", iPhone, "iPhone13,1"},
    Source{Phone, on(2023, 10, 9), phone, "17.1.2", iPhone, "iPhone15,4"},
    Source{Phone, on(2024, 10, 30), phone, "18.1", iPhone, "iPhone15,4"},
    Source{Phone, on(2025, 5, 14), phone, "18.5", iPhone, "iPhone15,4"},

    Source{Watch, on(2015, 10, 1), watch, "2.0", appleWatch, "Watch1,2"},
    Source{Watch, on(2016, 9, 21), watch, "3.1", appleWatch, "Watch1,2"},
    Source{Watch, on(2017, 12, 24), watch, "4.2", appleWatch, "Watch3,4"},
    Source{Watch, on(2018, 10, 4), watch, "5.1.3", appleWatch, "Watch3,4"},
    Source{Watch, on(2019, 10, 20), watch, "6.1", appleWatch, "Watch3,4"},
    Source{Watch, on(2020, 10, 2), watch, "7.1", appleWatch, "Watch6,1"},
    Source{Watch, on(2021, 10, 6), watch, "8.3", appleWatch, "Watch6,1"},
    Source{Watch, on(2022, 9, 30), watch, "9.1", appleWatch, "Watch6,1"},
    Source{Watch, on(2023, 10, 11), watch, "10.1", appleWatch, "Watch7,4"},
    Source{Watch, on(2024, 11, 1), watch, "11.1", appleWatch, "Watch7,4"},

    Source{Pedometer, on(2015, 10, 1), "Pas à Pas", "2.4.1", "", ""},
    Source{Pedometer, on(2019, 3, 7), "Schritt &amp; Tritt", "3.0", "", ""},

    Source{Scale, on(2015, 10, 1), "Körperwaage Größe L", "1.7",
           "name:Body scale, manufacturer:Vågen, model:VG 2, firmware:381", ""},
    Source{Cuff, on(2015, 10, 1), "Cœur &amp; Pouls", "5.12.0",
           "name:BPM, manufacturer:Cœur &amp; Pouls, model:BP-4, firmware:1.0.9", "B"},
    Source{Diary, on(2015, 10, 1), "日々の記録", "41", "", ""},
};

}  // namespace

const Source& sourceOn(local_days day, Maker maker) {
    const Source* found = std::ranges::find(sources, maker, &Source::maker);
    for (const Source& source : sources) {
        if (source.maker == maker && source.since <= day) {
            found = &source;
        }
    }
    return *found;
}

void appendSource(std::string& text, const Source& source, Random& random) {
    appendAttribute(text, "sourceName", source.name);
    appendAttribute(text, "sourceVersion", source.version);
    if (source.device.empty()) {
        return;
    }
    text += " device=\"&lt;&lt;HKDevice: 0x";
    text += "28";
    constexpr std::string_view digits = "0123456789abcdef";
    for (int i = 0; i < 7; ++i) {
        text += digits[random.below(16)];
    }
    text += "&gt;, ";
    text += source.device;
    if (!source.hardware.empty()) {
        text += ", hardware:";
        text += source.hardware;
        text += ", software:";
        text += source.version;
    }
    if (source.since >= on(2022, 1, 1)) {
        text += ", creation date:";
        appendDay(text, source.since);
        text += " 16:35:01 +0000";
    }
    text += "&gt;\"";
}

}  // namespace makeexport
