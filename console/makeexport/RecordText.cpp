#include "makeexport/RecordText.h"

#include "makeexport/Text.h"

namespace makeexport {

using namespace std::chrono;

void appendTimes(std::string& text, DateText& dates, const Times& times) {
    text += " creationDate=\"";
    dates.append(text, times.created);
    text += "\" startDate=\"";
    dates.append(text, times.start);
    text += "\" endDate=\"";
    dates.append(text, times.end);
    text += '"';
}

void appendMetadata(std::string& text, std::string_view indent, std::string_view key,
                    std::string_view value) {
    text += indent;
    text += " <MetadataEntry";
    appendAttribute(text, "key", key);
    appendAttribute(text, "value", value);
    text += "/>\n";
}

void RecordText::append(std::string& text, std::string_view indent, const Source& source,
                        const Times& times, std::string_view value) {
    text += indent;
    text += head(source);
    appendTimes(text, _dates, times);
    appendAttribute(text, "value", value);

    const Metadata* metadata = _type.metadata;
    const bool hasMetadata = metadata != nullptr && _random.oneIn(metadata->oneIn);
    if (!hasMetadata && !_type.beats) {
        text += "/>\n";
        return;
    }
    text += ">\n";
    if (hasMetadata) {
        appendMetadata(text, indent, metadata->key, _random.oneOf(metadata->values));
    }
    if (_type.beats) {
        appendBeats(text, indent, times.start);
    }
    text += indent;
    text += "</Record>\n";
}

const std::string& RecordText::head(const Source& source) {
    for (const auto& [known, text] : _heads) {
        if (known == &source) {
            return text;
        }
    }
    std::string text = "<Record type=\"";
    text += _type.prefix();
    text += _type.name;
    text += '"';
    appendSource(text, source, _random);
    if (!_type.unit.empty()) {
        appendAttribute(text, "unit", _type.unit);
    }
    return _heads.emplace_back(&source, std::move(text)).second;
}

void RecordText::appendBeats(std::string& text, std::string_view indent, sys_seconds start) {
    const seconds local = start.time_since_epoch() + _clock.stretchAt(start).offset;
    std::int64_t hundredths = (local % days(1)).count() * 100;
    text += indent;
    text += " <HeartRateVariabilityMetadataList>\n";
    for (int beats = _random.between(8, 40); beats > 0; --beats) {
        const int perMinute = _random.between(49, 84);
        hundredths = (hundredths + 6000 / perMinute) % 8640000;
        const std::int64_t hour = hundredths / 360000;
        text += indent;
        text += "  <InstantaneousBeatsPerMinute bpm=\"";
        appendNumber(text, perMinute);
        text += "\" time=\"";
        appendNumber(text, hour % 12 == 0 ? 12 : hour % 12);
        text += ':';
        appendTwoDigits(text, static_cast<unsigned>(hundredths / 6000 % 60));
        text += ':';
        appendTwoDigits(text, static_cast<unsigned>(hundredths / 100 % 60));
        text += '.';
        appendTwoDigits(text, static_cast<unsigned>(hundredths % 100));
        // A narrow no-break space.
        text += hour < 12 ? "\u202fAM\"/>\n" : "\u202fPM\"/>\n";
    }
    text += indent;
    text += " </HeartRateVariabilityMetadataList>\n";
}

}  // namespace makeexport
