"""export.py SIZE [SEED] [FILE]: writes an export of about SIZE to a file or to standard output. SIZE is a
number with K, M or G (powers of 1024).

The export covers ten years of a phone, a watch, a scale and an app, in blocks by type. A larger export is
denser. The same size and seed give the same bytes. This generator shares neither code nor tables with
makeexport. So a reader that is fast on the exports of both is not tuned to one generator."""
import bisect
import datetime
import itertools
import random
import sys
from zoneinfo import ZoneInfo

size = int(sys.argv[1][:-1]) << {"K": 10, "M": 20, "G": 30}[sys.argv[1][-1]]
chance = random.Random(int(sys.argv[2]) if len(sys.argv) > 2 else 1)
out = open(sys.argv[3], "wb") if len(sys.argv) > 3 else sys.stdout.buffer
rnd, gauss, wait = chance.random, chance.gauss, chance.expovariate

# A time is a number of seconds in local time, counted from the first day. The offset from UTC of a day is
# that of New York at noon.
DAYS, HOUR = 3650, 3600
MIDDAYS = [datetime.datetime(2015, 10, 3, 12, tzinfo=ZoneInfo("America/New_York")) + datetime.timedelta(day)
           for day in range(DAYS + 10)]
DATES, OFFSETS = [f"{day:%Y-%m-%d}" for day in MIDDAYS], [f"{day:%z}" for day in MIDDAYS]
CLOCK = [f"{h:02}:{m:02}:{s:02}" for h in range(24) for m in range(60) for s in range(60)]


def stamp(time):
    day, second = divmod(int(time), 24 * HOUR)
    return f"{DATES[day]} {CLOCK[second]} {OFFSETS[day]}"


def releases(major, models):
    """The releases of a device's system: date, version, model of the device. Each autumn has a major release,
    which three minor ones follow."""
    return [(24 * HOUR * (365 * year + 80 * minor - 60 * (year + minor > 0) + chance.randint(0, 60)),
             f"{major + year}.{minor}" + (f".{chance.randint(1, 3)}" if rnd() < 0.4 else ""),
             models[year * len(models) // 10]) for year in range(10) for minor in range(4)]


# The sources of records: sourceName, device, releases.
APPLE = "manufacturer:Apple Inc., model:"
PHONE = ("Renée’s iPhone", f"name:iPhone, {APPLE}iPhone",
         releases(9, ["iPhone8,1", "iPhone10,6", "iPhone13,2", "iPhone16,1"]))
WATCH = ("Renée’s Apple\u00a0Watch", f"name:Apple Watch, {APPLE}Watch",
         releases(2, ["Watch1,1", "Watch4,3", "Watch6,6"]))
SCALE = ("Wågen", "name:WBS05, manufacturer:Wågen &amp; Söhne, model:WBS05", releases(3, ["5"]))
APP = ("Zähler – Schritte &amp; Treppen", None, releases(1, [""]))


def entry(key, *values, share=1.0):
    rows = [f'  <MetadataEntry key="{key}" value="{value}"/>\n' for value in values]
    return lambda _: chance.choice(rows) if share == 1 or rnd() < share else ""


def beats(time):
    second, text = time % 86000, "  <HeartRateVariabilityMetadataList>\n"
    for _ in range(chance.randint(20, 70)):
        second += 0.6 + 0.4 * rnd()
        hour, rest = divmod(second, HOUR)
        text += (f'   <InstantaneousBeatsPerMinute bpm="{chance.randint(55, 96)}" time="{(int(hour) + 11) % 12 + 1}:'
                 f'{int(rest // 60):02}:{rest % 60:05.2f} {"AP"[hour >= 12]}M"/>\n')
    return text + "  </HeartRateVariabilityMetadataList>\n"


def figure(mean, digits):
    return lambda: f"{wait(1 / mean):.{digits}g}"


def normal(mean, spread, form):
    return lambda: format(gauss(mean, spread), form)


def one_of(prefix, *words):
    return lambda: prefix + chance.choice(words)


# The types of records: type, share of the bytes in thousandths, sources, hours of the day, most seconds from
# start to end, unit, value, children.
DAY, NIGHT = (7, 23), (0, 24)
TYPES = [
    ("BodyMass", 4, [SCALE], (7, 9), 0, "kg", normal(64, 2, ".2f"), entry("HKWasUserEntered", 0)),
    ("HeartRate", 200, [WATCH], NIGHT, 0, "count/min", normal(78, 17, ".0f"),
     entry("HKMetadataKeyHeartRateMotionContext", 0, 0, 1, 2)),
    ("OxygenSaturation", 12, [WATCH], NIGHT, 15, "%", one_of("0.9", "5", "6", "7", "8", "9"),
     entry("HKMetadataKeyBarometricPressure", "101.3 kPa", "100.897 kPa", "99.4512 kPa")),
    ("StepCount", 95, [PHONE, PHONE, WATCH, WATCH, WATCH, APP], DAY, 600, "count", lambda: str(1 + int(wait(1 / 130))),
     entry("HKWasUserEntered", 1, share=0.004)),
    ("DistanceWalkingRunning", 110, [PHONE, WATCH, WATCH], DAY, 600, "mi", figure(0.06, 6), None),
    ("BasalEnergyBurned", 170, [WATCH], NIGHT, 900, "Cal", figure(9, 6), None),
    ("ActiveEnergyBurned", 300, [WATCH], DAY, 60, "Cal", figure(0.7, 4), None),
    ("FlightsClimbed", 8, [PHONE], DAY, 600, "count", lambda: str(1 + int(wait(1.2))), None),
    ("EnvironmentalAudioExposure", 20, [WATCH], NIGHT, 1800, "dBASPL", normal(62, 9, ".7g"),
     entry("HKMetadataKeyAudioExposureLevel", 1, share=0.02)),
    ("WalkingSpeed", 15, [PHONE], DAY, 8, "mi/hr", normal(2.8, 0.4, ".6g"),
     entry("HKMetadataKeyAppleDeviceCalibrated", 0, 1)),
    ("WalkingStepLength", 15, [PHONE], DAY, 8, "in", normal(27, 2, ".5g"), None),
    ("HeartRateVariabilitySDNN", 20, [WATCH], NIGHT, 60, "ms", normal(45, 12, ".7g"), beats),
    ("SleepAnalysis", 11, [WATCH, PHONE], NIGHT, 2400, None,
     one_of("HKCategoryValueSleepAnalysis", "AsleepCore", "AsleepREM", "AsleepDeep", "Awake", "InBed"),
     entry("HKTimeZone", "America/New_York", share=0.7)),
    ("AppleStandHour", 10, [WATCH], DAY, HOUR, None, one_of("HKCategoryValueAppleStandHour", "Stood", "Idle"), None)]


def records(name, share, makers, hours, longest, unit, value, children):
    """The block of a type, sorted by time. It consists of runs of records from the same source, with the same
    address of the device."""
    begin = f' <Record type="HK{"Quantity" if unit else "Category"}TypeIdentifier{name}" sourceName="'
    unit = f' unit="{unit}"' if unit else ""
    budget, created, left = size * share / 1000, 0, 0
    gap = 24 * HOUR * DAYS / (budget / 380) * (hours[1] - hours[0]) / 24
    longest, time = min(longest, gap), hours[0] * HOUR + gap * rnd()
    while budget > 0 and time < 24 * HOUR * DAYS:
        if left == 0:
            (maker, device, versions), left = chance.choice(makers), 1 + int(wait(chance.choice([1 / 15, 1 / 3, 2])))
            _, version, model = versions[max(1, bisect.bisect(versions, (time,))) - 1]
            head = f'{begin}{maker}" sourceVersion="{version}"'
            if device:
                head += (f' device="&lt;&lt;HKDevice: 0x2{chance.randrange(8 << 24):07x}0&gt;, {device}, hardware:{model}, '
                         f'software:{version}&gt;"')
            head += unit
        left -= 1
        end = time + int(longest * rnd())
        if not created - 300 < end < created:  # otherwise it is stored together with the record before
            created = end + wait(0.02)
        inner = children(time) if children else ""
        text = (f'{head} creationDate="{stamp(created)}" startDate="{stamp(time)}" endDate="{stamp(end)}" '
                f'value="{value()}"')
        yield (f"{text}>\n{inner} </Record>\n" if inner else text + "/>\n").encode()
        budget -= len(text) + len(inner) + 8
        time = max(end, time + wait(1 / gap)) if rnd() < 0.5 else time + wait(1 / gap)
        if not hours[0] <= (hour := time % (24 * HOUR) / HOUR) < hours[1]:
            time += HOUR * ((hours[0] - hour) % 24 + 0.5 * rnd())


def workouts():
    number = max(1, size >> 20)
    for n in range(number):
        begin, minutes = 24 * HOUR * (n * DAYS // number) + 17 * HOUR + chance.randint(0, 7000), chance.randint(12, 80)
        end = stamp(begin + 60 * minutes)
        times = f'startDate="{stamp(begin)}" endDate="{end}"'
        yield (f' <Workout workoutActivityType="HKWorkoutActivityType{chance.choice(["Walking", "Running", "Yoga"])}"'
               f' duration="{minutes}" durationUnit="min" sourceName="{WATCH[0]}" creationDate="{end}" {times}>\n'
               f'  <MetadataEntry key="HKIndoorWorkout" value="{chance.choice("01")}"/>\n  <WorkoutStatistics type='
               f'"HKQuantityTypeIdentifierActiveEnergyBurned" {times} sum="{wait(0.005):.6g}" unit="Cal"/>\n'
               ' </Workout>\n').encode()


def summaries():
    for date in DATES[:DAYS:max(1, (1 << 26) // size)]:
        yield (f' <ActivitySummary dateComponents="{date}" activeEnergyBurned="{gauss(450, 90):.3f}" '
               f'activeEnergyBurnedUnit="Cal" appleStandHours="{chance.randint(5, 15)}"/>\n').encode()


# The declarations of elements: content, required attributes, optional attributes.
ELEMENTS = {
    "HealthData": ("(ExportDate, Me, (Record | Workout | ActivitySummary)*)", "", "locale"),
    "ExportDate": ("EMPTY", "value", ""), "Me": ("EMPTY", "HKCharacteristicTypeIdentifierBiologicalSex", ""),
    "Record": ("(MetadataEntry | HeartRateVariabilityMetadataList)*", "type sourceName startDate endDate",
               "unit value sourceVersion device creationDate"),
    "Workout": ("(MetadataEntry | WorkoutStatistics)*", "workoutActivityType sourceName startDate endDate",
                "duration durationUnit creationDate"),
    "ActivitySummary": ("EMPTY", "", "dateComponents activeEnergyBurned activeEnergyBurnedUnit appleStandHours"),
    "MetadataEntry": ("EMPTY", "key value", ""), "WorkoutStatistics": ("EMPTY", "type startDate endDate", "sum unit"),
    "HeartRateVariabilityMetadataList": ("(InstantaneousBeatsPerMinute)*", "", ""),
    "InstantaneousBeatsPerMinute": ("EMPTY", "bpm time", "")}
out.write('<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE HealthData [\n<!-- HealthKit Export Version: 13 -->\n'
          .encode())
for element, (content, *attributes) in ELEMENTS.items():
    lists = "".join(f"\n  {name} CDATA #{need}" for need, names in zip(("REQUIRED", "IMPLIED"), attributes)
                    for name in names.split())
    out.write(f"<!ELEMENT {element} {content}>\n<!ATTLIST {element}{lists}\n>\n".encode())
out.write(f']>\n<HealthData locale="en_US">\n <ExportDate value="{stamp(24 * HOUR * DAYS)}"/>\n'
          ' <Me HKCharacteristicTypeIdentifierBiologicalSex="HKBiologicalSexFemale"/>\n'.encode())
lines = itertools.chain(*(records(*row) for row in TYPES), workouts(), summaries())
while block := b"".join(itertools.islice(lines, 4096)):
    out.write(block)
out.write(b"</HealthData>\n")
out.close()
