// Everything is written in one pass, section by section: the records of a type, the correlations,
// the workouts. A section has its share of the bytes and ends where the next element would pass its
// end; what it leaves is the next one's. The summaries at the end, all of one length, fill the
// rest.

#include "makeexport/Export.h"

#include "makeexport/ActivitySummaries.h"
#include "makeexport/Clock.h"
#include "makeexport/Correlations.h"
#include "makeexport/Period.h"
#include "makeexport/Prolog.h"
#include "makeexport/Records.h"
#include "makeexport/StepPlan.h"
#include "makeexport/Timeline.h"
#include "makeexport/Workouts.h"

#include <algorithm>
#include <utility>

namespace makeexport {

using namespace std::chrono;

namespace {

constexpr std::string_view rootEnd = "</HealthData>\n";

// Full declarations would be too much of a file smaller than this.
constexpr std::uint64_t fullDeclarationsFrom = std::uint64_t{64} << 10;

// A step record fits into this: there is one in the smallest of files.
constexpr std::uint64_t roomForSteps = 500;

// The summaries' share of 10,000 bytes, as long as there are no more of them than days.
constexpr std::uint64_t summaryShare = 50;

// Step records that stand in a correlation as well.
constexpr std::size_t repeatedSteps = 32;

enum Stream : std::uint64_t { Trips, Walks, CorrelationData, WorkoutData, SummaryData, TypeData };

class Export {
  public:
    Export(std::uint64_t seed, std::uint64_t size, Output& out, StepSums& sums)
        : _seed(seed),
          _declarations(size < fullDeclarationsFrom ? Declarations::Short : Declarations::Full),
          _end(size - rootEnd.size()), _out(out), _sums(sums), _clock(Random::stream(seed, Trips)),
          _plan(Random::stream(seed, Walks)) {}

    void write() {
        _out.write(prolog(_declarations, _clock));
        planSections();
        std::uint64_t stream = TypeData;
        for (const RecordType& type : recordTypes()) {
            writeRecords(type, Random::stream(_seed, stream++));
        }
        writeCorrelations();
        writeWorkouts();
        writeSummaries();
        _out.write(rootEnd);
    }

  private:
    void planSections() {
        _sectionsBegin = _out.size();
        // No more summaries than days, and some days kept free for what the last section leaves.
        const std::uint64_t days = daysOfPeriod().size() - longestWorkout / _summaryLength - 1;
        _sectionsEnd =
            _end - std::min((_end - _sectionsBegin) * summaryShare / 10000, days * _summaryLength);
    }

    /// Where the section ends that has the next `share`.
    std::uint64_t endOfSection(unsigned share) {
        _shares += share;
        return _sectionsBegin + (_sectionsEnd - _sectionsBegin) * _shares / 10000;
    }

    /// Writes elements, as `append` makes them, that tell of `days`, until the next would pass
    /// `end`. `written` is called for each.
    template <class Append, class Written>
    void fill(std::uint64_t end, std::vector<local_days> days, Append append, Written written) {
        const std::uint64_t begin = _out.size();
        if (begin >= end) {
            return;
        }
        const Timeline timeline(std::move(days), begin, end);
        std::size_t usual = 420;
        while (_out.size() < end && !_out.error()) {
            _element.clear();
            append(_element, timeline.at(_out.size(), usual));
            usual = _element.text.size();
            if (_out.size() + usual > end) {
                return;
            }
            _out.write(_element.text);
            for (const StepSample& sample : _element.steps) {
                _sums.add(sample);
            }
            written(_element);
        }
    }

    template <class Section>
    void fill(std::uint64_t end, std::vector<local_days> days, Section section) {
        fill(
            end, std::move(days),
            [&](Element& element, const Moment& moment) { section.append(element, moment); },
            [](const Element&) {});
    }

    void writeRecords(const RecordType& type, Random random) {
        const std::uint64_t end = endOfSection(type.share);
        if (&type == &recordType("StepCount")) {
            writeSteps(end, random);
        } else {
            const local_days since(year(type.sinceYear) / January / 1);
            fill(end, daysOfPeriod(std::max(since, firstDay)), Records(type, _clock, random));
        }
    }

    void writeSteps(std::uint64_t end, Random random) {
        StepRecords records(_plan, _clock, random);
        constexpr auto apart = (periodEnd - periodBegin) / repeatedSteps;
        sys_seconds next = periodBegin;
        fill(
            std::max(end, std::min(_out.size() + roomForSteps, _end)), _plan.days(),
            [&](Element& element, const Moment& moment) { records.append(element, moment); },
            [&](const Element& element) {
                if (element.steps.front().start >= next) {
                    _repeated.push_back(element);
                    next = element.steps.front().start + apart;
                }
            });
    }

    void writeCorrelations() {
        fill(endOfSection(correlationShare), daysOfPeriod(),
             Correlations(std::move(_repeated), _clock, Random::stream(_seed, CorrelationData)));
    }

    void writeWorkouts() {
        fill(endOfSection(workoutShare), daysOfPeriod(),
             Workouts(_clock, Random::stream(_seed, WorkoutData)));
    }

    void writeSummaries() {
        Random random = Random::stream(_seed, SummaryData);
        const std::vector<local_days> days = daysOfPeriod();
        const std::size_t number =
            std::min(static_cast<std::size_t>((_end - _out.size()) / _summaryLength), days.size());
        for (std::size_t i = 1; i <= number; ++i) {
            _element.clear();
            appendActivitySummary(_element.text, days[i * days.size() / number - 1], random);
            _out.write(_element.text);
        }
    }

    std::uint64_t _seed;
    Declarations _declarations;
    std::uint64_t _end;  // of the root's content
    const std::uint64_t _summaryLength = activitySummaryLength();
    Output& _out;
    StepSums& _sums;
    Clock _clock;
    StepPlan _plan;
    Element _element;
    std::vector<Element> _repeated;
    unsigned _shares = 0;  // of the sections so far
    std::uint64_t _sectionsBegin = 0;
    std::uint64_t _sectionsEnd = 0;
};

}  // namespace

void writeExport(std::uint64_t seed, std::uint64_t size, Output& out, StepSums& sums) {
    Export(seed, size, out, sums).write();
    out.finish();
}

}  // namespace makeexport
