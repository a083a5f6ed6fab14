// fuzz_instants: from every text, InstantReader and ICU must read the same instant, or none. If the
// date or the time of day has a letter, ICU may read an instant that InstantReader does not read.

#include "Rule.h"
#include "text/InstantReader.h"

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string_view>

using namespace ambulet;
using namespace std::chrono;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Instant = std::optional<sys_seconds>;

class Icu {
  public:
    Icu() : _format(u"yyyy-MM-dd HH:mm:ss Z", icu::Locale("en_US"), _status) {
        _format.adoptCalendar(new icu::GregorianCalendar(*icu::TimeZone::getGMT(), _status));
        _format.setLenient(false);
        require(U_SUCCESS(_status) != 0, "ICU works");
    }

    Instant instant(std::string_view text) const {
        const icu::UnicodeString unicode = icu::UnicodeString::fromUTF8(text);
        icu::ParsePosition end(0);
        const UDate instant = _format.parse(unicode, end);
        const sys_time<milliseconds> read(milliseconds(static_cast<std::int64_t>(instant)));
        if (end.getIndex() == 0 || read >= sys_days(32767y / January / 1)) {
            return std::nullopt;
        }
        for (int at = end.getIndex(); at < unicode.length(); ++at) {
            if (unicode[at] != u' ' && unicode[at] != u'\t') {
                return std::nullopt;
            }
        }
        return floor<seconds>(read);
    }

  private:
    UErrorCode _status = U_ZERO_ERROR;
    icu::SimpleDateFormat _format;
};

// ICU accepts names of months, and numbers such as "1e3". InstantReader does not.
bool hasLetterBeforeTheOffset(std::string_view text) {
    const std::size_t end = text.find_last_not_of(" \t");
    const std::string_view dateAndTime = text.substr(0, text.rfind(' ', end));
    return std::ranges::any_of(dateAndTime, [](unsigned char c) { return std::isalpha(c) != 0; });
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Icu icu;
    static InstantReader reader;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Instant read = reader.instant(text);
    const Instant expected = icu.instant(text);
    const Instant exact = InstantReader::exactInstant(text);
    require(!exact || exact == read, "exactInstant reads the same as instant");
    require(!read || read == expected, "InstantReader reads the same as ICU");
    require(read || !expected || hasLetterBeforeTheOffset(text),
            "InstantReader reads every instant that ICU reads");
    require(InstantReader().instant(text) == read, "earlier texts have no effect");
    return 0;
}
