// Document type declarations:
// - The entities and the default values that they declare are used.
// - The files that they refer to are never opened.
// - A malformed declaration is ignored if its end can be found.

#include "import/Reading.h"
#include "import/expat/Declarations.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <pthread.h>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>

namespace ambulet {

namespace {

std::string withDoctype(std::string_view doctype, std::string_view content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + std::string(doctype) +
           "\n<HealthData>\n" + std::string(content) + "</HealthData>\n";
}

std::string twoRecords() {
    return step(noon9, "5") + step(noon10, "7");
}

// Detects whether a file is opened.
class OpeningWatch {
  public:
    explicit OpeningWatch(const std::filesystem::path& file)
        : _descriptor(inotify_init1(IN_NONBLOCK)) {
        EXPECT_GE(inotify_add_watch(_descriptor, file.c_str(), IN_OPEN), 0);
    }
    ~OpeningWatch() { close(_descriptor); }
    OpeningWatch(const OpeningWatch&) = delete;
    OpeningWatch& operator=(const OpeningWatch&) = delete;

    bool wasOpened() const {
        char event[4096];
        return ::read(_descriptor, event, sizeof event) > 0;
    }

  private:
    int _descriptor;
};

// Declarations of the entities e0 to e19. The value of e0 is `first`; the value of each other
// entity refers ten times to the previous one. `kind` and `reference` are "" and "&" for general
// entities, "% " and "&#37;" for parameter entities.
std::string bomb(std::string_view first, const std::string& kind, const std::string& reference) {
    std::string declarations = "<!ENTITY " + kind + "e0 '" + std::string(first) + "'>\n";
    for (int level = 1; level < 20; ++level) {
        declarations += "<!ENTITY " + kind + 'e' + std::to_string(level) + " '";
        for (int copy = 0; copy < 10; ++copy) {
            declarations += reference + 'e' + std::to_string(level - 1) + ';';
        }
        declarations += "'>\n";
    }
    return declarations;
}

double cpuSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Declarations of a chain of entities: e0 refers to e1, and so on. The last one is empty. `kind`
// and `reference` are those of `bomb`.
std::string chain(std::size_t references, const std::string& kind, const std::string& reference) {
    std::string declarations;
    for (std::size_t level = 0; level < references; ++level) {
        declarations += "<!ENTITY " + kind + 'e' + std::to_string(level) + " '" + reference + 'e' +
                        std::to_string(level + 1) + ";'>\n";
    }
    return declarations + "<!ENTITY " + kind + 'e' + std::to_string(references) + " ''>\n";
}

// A way to use e0 of a chain. For each way, other recursive functions of expat expand the chain.
struct ChainUse {
    std::string kind;
    std::string reference;
    std::string inDoctype;
    std::string inContent;
};

const ChainUse chainUses[] = {
    {"", "&", "", "&e0;"},
    {"", "&", "", "<Note text='&e0;'/>"},
    {"", "&", "<!ATTLIST Note text CDATA '&e0;'>", ""},
    {"% ", "&#37;", "%e0;", ""},
    {"% ", "&#37;", "<!ENTITY % all '<!ENTITY note \"&#37;e0;\">'>%all;", ""},
};

// Runs `work` on a thread with a stack of `bytes` bytes.
void runOnStack(std::size_t bytes, std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* run) -> void* {
                      (*static_cast<std::function<void()>*>(run))();
                      return nullptr;
                  },
                  &work),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(Entities, anInternalEntityMayHoldARecord) {
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData [<!ENTITY r '" + step(noon9, "5") + "'>]>",
                               "&r;" + step(noon10, "7"))),
              (Reading{both, {}}));
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData [<!ENTITY r '" + step(noon9, "2") + "'>]>",
                               "&r;&r;" + step(noon9, "1"))),
              (Reading{ninth, {}}));
}

TEST(Entities, anEntityMayHoldAnAttributesValue) {
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData [<!ENTITY day '2024-03-09'>"
                               "<!ENTITY five '5'>]>",
                               step("&day; 12:00:00 +0000", "&five;"))),
              (Reading{ninth, {}}));
}

TEST(Entities, aParameterEntityMayHoldDeclarations) {
    EXPECT_EQ(
        read(withDoctype("<!DOCTYPE HealthData [<!ENTITY % all \"<!ENTITY five '5'>\">%all;]>",
                         step(noon9, "&five;"))),
        (Reading{ninth, {}}));
}

// A standalone document must not depend on declarations in parameter entities.
TEST(Entities, aParameterEntityIsNotReadInAStandaloneDocument) {
    for (const auto& [standalone, days] : {std::pair("yes", ninth), {"no", both}}) {
        EXPECT_EQ(read("<?xml version=\"1.0\" standalone=\"" + std::string(standalone) +
                       "\"?><!DOCTYPE HealthData [<!ENTITY % all \"<!ATTLIST Record type CDATA "
                       "'HKQuantityTypeIdentifierStepCount'>\">%all;]><HealthData>" +
                       step(noon9, "5") + "<Record " +
                       "startDate=\"2024-03-10 12:00:00 +0000\" value=\"7\"/></HealthData>"),
                  (Reading{days, {}}))
            << standalone;
    }
}

TEST(Entities, aRecordsTypeMayBeADeclaredDefault) {
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData [<!ATTLIST Record type CDATA "
                               "\"HKQuantityTypeIdentifierStepCount\">]>",
                               "<Record startDate=\"2024-03-09 12:00:00 +0000\" value=\"5\"/>"
                               "<Record type=\"HKQuantityTypeIdentifierHeartRate\" "
                               "startDate=\"2024-03-09 12:00:00 +0000\" value=\"100\"/>")),
              (Reading{ninth, {}}));
}

TEST(Entities, theTypeMayBeWrittenWithCharacterReferences) {
    EXPECT_EQ(read(document("<Record type=\"HKQuantityType&#73;dentifierStep&#x43;ount\" "
                            "startDate=\"2024-03-09 12:00:00 +0000\" value=\"&#53;\"/>")),
              (Reading{ninth, {}}));
}

TEST(Entities, lineBreaksAndTabsInAValueAreReadAsBlanks) {
    EXPECT_EQ(read(document(step("2024-03-09\n12:00:00\t+0000", "\r\n5"))), (Reading{ninth, {}}));
}

TEST(Entities, anExternalEntityIsNotOpened) {
    const TemporaryFolder folder;
    const std::string path = folder.write("steps.ent", step(noon10, "7"));
    const OpeningWatch watch(path);
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData [<!ENTITY r SYSTEM \"file://" + path + "\">]>",
                               step(noon9, "5") + "&r;")),
              (Reading{ninth, {}}));
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData [<!ENTITY r SYSTEM \"" + path + "\">]>",
                               step(noon9, "5") + "&r;")),
              (Reading{ninth, {}}));
    EXPECT_FALSE(watch.wasOpened());
    const std::ifstream opened(path);
    EXPECT_TRUE(watch.wasOpened());
}

TEST(Entities, anExternalSubsetIsNotOpened) {
    const TemporaryFolder folder;
    const std::string path = folder.write("steps.dtd", "<!ENTITY r '" + step(noon10, "7") + "'>");
    const OpeningWatch watch(path);
    EXPECT_EQ(
        read(withDoctype("<!DOCTYPE HealthData SYSTEM \"file://" + path + "\">", step(noon9, "5"))),
        (Reading{ninth, {}}));
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData PUBLIC \"-//X\" \"" + path + "\" []>",
                               step(noon9, "5"))),
              (Reading{ninth, {}}));
    EXPECT_EQ(read(withDoctype("<!DOCTYPE HealthData [<!ENTITY % s SYSTEM \"" + path + "\">%s;]>",
                               step(noon9, "5"))),
              (Reading{ninth, {}}));
    EXPECT_FALSE(watch.wasOpened());
}

TEST(Entities, anEntityBombIsStoppedAtOnce) {
    const std::string doctype = "<!DOCTYPE HealthData [" + bomb(step(noon10, "7"), "", "&") + "]>";
    const TemporaryFolder folder;
    const auto path = folder.write("bomb.xml", withDoctype(doctype, step(noon9, "5") + "&e19;"));
    const double begin = cpuSeconds();
    const Reading reading = readFile(path, ExpatReader::defaultBlockSize);
    EXPECT_LT(cpuSeconds() - begin, 1);
    ASSERT_TRUE(reading.error);
    EXPECT_EQ(reading.error->reason, XMLErrorReason::entityAmplification);
    EXPECT_EQ(reading.days.back(), ninth.back());
}

TEST(Entities, anEntityBombInsideTheDeclarationIsIgnored) {
    const std::string doctype =
        "<!DOCTYPE HealthData [" + bomb("<!-- a -->", "% ", "&#37;") + "%e19;]>";
    const TemporaryFolder folder;
    const auto path = folder.write("bomb.xml", withDoctype(doctype, step(noon9, "5")));
    const double begin = cpuSeconds();
    EXPECT_EQ(readFile(path, ExpatReader::defaultBlockSize), (Reading{ninth, {}}));
    EXPECT_LT(cpuSeconds() - begin, 1);
}

TEST(Entities, entitiesNestedWithinTheLimitAreReadOnASmallStack) {
    for (const ChainUse& use : chainUses) {
        // The last use declares one more entity that refers to another.
        const std::size_t most = Declarations::mostNestingEntities -
                                 (use.inDoctype.find('"') == std::string::npos ? 0 : 1);
        const TemporaryFolder folder;
        const auto path =
            folder.write("export.xml", withDoctype("<!DOCTYPE HealthData [" +
                                                       chain(most, use.kind, use.reference) +
                                                       use.inDoctype + "]>",
                                                   step(noon9, "5") + use.inContent));
        runOnStack(std::size_t{256} * 1024, [&path, &use] {
            EXPECT_EQ(readFile(path, ExpatReader::defaultBlockSize), (Reading{ninth, {}}))
                << use.inDoctype << use.inContent;
            EXPECT_EQ(readFast(path, {.threads = 1}), (Reading{ninth, {}}));
        });
    }
}

TEST(Entities, tooDeepNestingIsAnErrorAtTheFirstEntityBeyondTheLimit) {
    const std::size_t most = Declarations::mostNestingEntities;
    for (const ChainUse& use : chainUses) {
        for (const std::size_t references : {most + 1, std::size_t{19'396}}) {
            const std::string bytes =
                withDoctype("<!DOCTYPE HealthData [" + chain(references, use.kind, use.reference) +
                                use.inDoctype + "]>",
                            step(noon9, "5") + use.inContent);
            const std::string value = '\'' + use.reference + 'e' + std::to_string(most + 1) + ";'";
            const TemporaryFolder folder;
            const auto path = folder.write("export.xml", bytes);
            const Reading stopped{{},
                                  XMLError{byteOf(bytes, value), XMLErrorReason::entityNesting}};
            runOnStack(std::size_t{256} * 1024, [&path, &stopped] {
                EXPECT_EQ(readFile(path, ExpatReader::defaultBlockSize), stopped);
                EXPECT_EQ(readFile(path, 7), stopped);
                EXPECT_EQ(readFast(path, {.threads = 1}), stopped);
            });
        }
    }
}

TEST(Entities, thousandsOfEntitiesThatReferToNoOthersAreAllowed) {
    std::string declarations;
    for (int number = 0; number < 2'000; ++number) {
        declarations += "<!ENTITY e" + std::to_string(number) + " '&#38;#60; 5 % &#38;'>\n";
    }
    EXPECT_EQ(readLarge(withDoctype("<!DOCTYPE HealthData [" + declarations + "]>", twoRecords())),
              (Reading{both, {}}));
}

TEST(Entities, theMalformedDeclarationOfExportVersion12IsIgnored) {
    const char* const doctype = R"(<!DOCTYPE HealthData [
<!-- HealthKit Export Version: 12 -->
<!ELEMENT HealthData (ExportDate,Me,(Record|VisionPrescription)*)>
<!ATTLIST HealthData
  locale CDATA #REQUIRED
>
<!ELEMENT VisionPrescription (RightEye*, LeftEye*, Attachment*, MetadataEntry*)>
<!ATTLIST VisionPrescription
  type              CDATA #REQUIRED
  dateIssued        CDATA #REQUIRED
<!ELEMENT RightEye EMPTY>
<!ATTLIST RightEye
  sphere        CDATA #IMPLIED
>
  device           CDATA #IMPLIED
<!ELEMENT MetadataEntry EMPTY>
<!ATTLIST MetadataEntry
  key   CDATA #REQUIRED
>
>
]>)";
    EXPECT_EQ(read(withDoctype(doctype, twoRecords())), (Reading{both, {}}));
    // An error after the declaration is still reported, with its offset in the file.
    const std::string broken = withDoctype(doctype, twoRecords() + "</Workout>");
    EXPECT_EQ(read(broken), (Reading{both, XMLError{byteOf(broken, "/Workout", 1),
                                                    XMLErrorReason::mismatchedTag}}));
}

TEST(Entities, malformedDeclarationsOfManyKindsAreIgnored) {
    for (const char* doctype :
         {"<!DOCTYPE>", "<!DOCTYPE HealthData SYSTEM>", "<!DOCTYPE HealthData SYSTEM export.dtd>",
          "<!DOCTYPE HealthData [", "<!DOCTYPE HealthData [<!ELEMENT Me EMPTY>",
          "<!DOCTYPE HealthData [<!ATTLIST Me name CDATA ] >", "<!DOCTYPE HealthData [ & ]>",
          "<!DOCTYPE HealthData [ junk ] \n >", "<!DOCTYPE HealthData [\v]>",
          "<!DOCTYPE HealthData [ <ELEMENT Me EMPTY> ]>", "<!DOCTYPE Health Data [ ]>",
          "<!DOCTYPE HealthData [ don't ]>", "<!DOCTYPE HealthData [ <!ENTITY a \"b> ]>",
          "<!DOCTYPE HealthData [ junk <!-- ]> 'quoted' <HealthData> --> ]>",
          "<!DOCTYPE HealthData [ junk <? ]> <HealthData> ?> ]>",
          "<!DOCTYPE HealthData [ junk \"]>\" ]>", "<!DOCTYPE HealthData [ junk ']>' ]>",
          "<!DOCTYPE HealthData [ <!ENTITY % a '<!'> %a; ]>"}) {
        EXPECT_EQ(read(withDoctype(doctype, twoRecords())), (Reading{both, {}})) << doctype;
    }
}

TEST(Entities, aMalformedDeclarationIsIgnoredInUtf16) {
    const std::string ascii =
        "<!DOCTYPE HealthData [ junk ]><HealthData>" + twoRecords() + "</HealthData>";
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char character : ascii) {
        little += {character, '\0'};
        big += {'\0', character};
    }
    EXPECT_EQ(read(little), (Reading{both, {}}));
    EXPECT_EQ(read(big), (Reading{both, {}}));
    EXPECT_EQ(read("\xEF\xBB\xBF" + ascii), (Reading{both, {}}));
}

TEST(Entities, aMalformedDeclarationThatHidesTheRootIsAnError) {
    const std::string bytes = "<!DOCTYPE HealthData [ junk <!-- <HealthData>" + twoRecords();
    EXPECT_EQ(read(bytes), (Reading{{}, XMLError{byteOf(bytes, "junk"), XMLErrorReason::syntax}}));
}

TEST(Entities, anErrorBeforeOrAfterTheDeclarationIsReported) {
    const std::string before = "<!-- a -- b --><!DOCTYPE HealthData []><HealthData/>";
    EXPECT_EQ(read(before),
              (Reading{{}, XMLError{byteOf(before, "-- b", 2), XMLErrorReason::invalidToken}}));
    const std::string maybe =
        "<?xml version='1.0' standalone='maybe'?><!DOCTYPE HealthData [ junk ]><HealthData/>";
    EXPECT_EQ(
        read(maybe),
        (Reading{{}, XMLError{byteOf(maybe, "maybe"), XMLErrorReason::malformedDeclaration}}));
    const std::string after = "<!DOCTYPE HealthData []> junk <HealthData/>";
    EXPECT_EQ(read(after), (Reading{{}, XMLError{byteOf(after, "junk"), XMLErrorReason::syntax}}));
}

TEST(Entities, entitiesOfAnIgnoredDeclarationAreUndefined) {
    const std::string bytes = withDoctype("<!DOCTYPE HealthData [<!ENTITY five '5'> junk ]>",
                                          step(noon9, "5") + step(noon10, "&five;"));
    EXPECT_EQ(read(bytes), (Reading{ninth, XMLError{byteOf(bytes, step(noon10, "&five;")),
                                                    XMLErrorReason::undefinedEntity}}));
}

}  // namespace

}  // namespace ambulet
