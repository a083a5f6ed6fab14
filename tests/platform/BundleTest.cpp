#include "platform/Bundle.h"

#include "TestFolder.h"

#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

QByteArray propertyList(const QByteArray& entries) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + entries +
           "</dict></plist>\n";
}

TEST(Bundle, theMainBundleHasTheApplicationsNameAndVersion) {
    const Bundle& bundle = Bundle::main();
    EXPECT_EQ(bundle.displayName(), u"Daily Steps"_s);
    EXPECT_EQ(bundle.identifier(), u"org.ambulet.DailySteps"_s);
    EXPECT_EQ(bundle.information(u"CFBundleName"_s), u"Daily Steps"_s);
    EXPECT_EQ(bundle.information(u"CFBundleExecutable"_s), u"ambulet"_s);
    EXPECT_EQ(bundle.information(u"CFBundleShortVersionString"_s), QStringLiteral(PROJECT_VERSION));
    EXPECT_EQ(bundle.information(u"CFBundleVersion"_s), QStringLiteral(PROJECT_VERSION));
    EXPECT_EQ(bundle.information(u"CFBundleDocumentTypes"_s), std::nullopt);
}

TEST(Bundle, theMainBundlesResourcesAreCompiledIn) {
    EXPECT_EQ(Bundle::main().resourcePath(u"Info"_s, u"plist"_s), u":/Info.plist"_s);
    EXPECT_EQ(Bundle::main().resourcePath(u"Info"_s, u"plist"_s, u"Help"_s), std::nullopt);
}

class BundleTest : public testing::Test {
  protected:
    Bundle bundleOf(const QByteArray& infoPlist) const {
        return {_folder.write(u"Info.plist"_s, infoPlist), _folder.path()};
    }
    TestFolder _folder;
};

TEST_F(BundleTest, aTextIsReturnedEvenIfItIsEmpty) {
    const Bundle bundle = bundleOf(propertyList(
        "<key>A</key><string>Schritte &amp; &#x41;\xe2\x80\xa6</string><key>B</key><string/>"));
    EXPECT_EQ(bundle.information(u"A"_s), u"Schritte & A…"_s);
    EXPECT_EQ(bundle.information(u"B"_s), u""_s);
    EXPECT_EQ(bundle.information(u"C"_s), std::nullopt);
}

TEST_F(BundleTest, anEntryThatIsNotATextIsNotReturned) {
    const Bundle bundle =
        bundleOf(propertyList("<key>A</key><true/><key>B</key><array><string>in B</string></array>"
                              "<key>C</key><dict><key>D</key><string>in "
                              "C</string></dict><key>E</key><string>e</string>"));
    EXPECT_EQ(bundle.information(u"A"_s), std::nullopt);
    EXPECT_EQ(bundle.information(u"B"_s), std::nullopt);
    EXPECT_EQ(bundle.information(u"C"_s), std::nullopt);
    EXPECT_EQ(bundle.information(u"D"_s), std::nullopt);
    EXPECT_EQ(bundle.information(u"E"_s), u"e"_s);
}

TEST_F(BundleTest, theNameIsTheProcessNameIfThereIsNoDisplayName) {
    const Bundle bundle = bundleOf(propertyList("<key>CFBundleName</key><string>No</string>"));
    EXPECT_EQ(bundle.displayName(), u"test_platform"_s);
}

TEST_F(BundleTest, anEmptyDisplayNameIsUsed) {
    const Bundle bundle = bundleOf(propertyList("<key>CFBundleDisplayName</key><string></string>"));
    EXPECT_EQ(bundle.displayName(), u""_s);
}

TEST_F(BundleTest, theDisplayNameIsReadAtEveryCall) {
    const Bundle bundle =
        bundleOf(propertyList("<key>CFBundleDisplayName</key><string>One</string>"));
    EXPECT_EQ(bundle.displayName(), u"One"_s);
    bundleOf(propertyList("<key>CFBundleDisplayName</key><string>Two</string>"));
    EXPECT_EQ(bundle.displayName(), u"Two"_s);
}

TEST_F(BundleTest, aDamagedOrMissingPropertyListHasNoEntries) {
    const QByteArray whole = propertyList("<key>CFBundleDisplayName</key><string>Name</string>"
                                          "<key>CFBundleIdentifier</key><string>a.b</string>");
    ASSERT_EQ(bundleOf(whole).identifier(), u"a.b"_s);
    for (const QByteArray& damaged :
         {QByteArray(), whole.chopped(5), whole + "junk", QByteArray("\0\1\2", 3),
          propertyList("<key>CFBundleIdentifier</key><string>a<b></string>"),
          QByteArray(
              "<html><dict><key>CFBundleIdentifier</key><string>a</string></dict></html>")}) {
        const Bundle bundle = bundleOf(damaged);
        EXPECT_EQ(bundle.identifier(), std::nullopt) << damaged.toStdString();
        EXPECT_EQ(bundle.displayName(), u"test_platform"_s) << damaged.toStdString();
    }
    EXPECT_EQ(Bundle(_folder.path(u"none.plist"_s), {}).identifier(), std::nullopt);
    EXPECT_EQ(Bundle(_folder.path(), {}).identifier(), std::nullopt);
}

TEST_F(BundleTest, aResourceIsFoundOnlyInTheGivenFolder) {
    _folder.write(u"Help/step_1.jpg"_s);
    _folder.write(u"top.jpg"_s);
    _folder.makeFolder(u"folder.jpg"_s);
    const Bundle bundle({}, _folder.path());
    EXPECT_EQ(bundle.resourcePath(u"step_1"_s, u"jpg"_s, u"Help"_s),
              _folder.path(u"Help/step_1.jpg"_s));
    EXPECT_EQ(bundle.resourcePath(u"top"_s, u"jpg"_s), _folder.path(u"top.jpg"_s));
    EXPECT_EQ(bundle.resourcePath(u"step_1"_s, u"jpg"_s), std::nullopt);
    EXPECT_EQ(bundle.resourcePath(u"top"_s, u"jpg"_s, u"Help"_s), std::nullopt);
    EXPECT_EQ(bundle.resourcePath(u"top"_s, u"png"_s), std::nullopt);
    EXPECT_EQ(bundle.resourcePath(u"folder"_s, u"jpg"_s), std::nullopt);
}

}  // namespace

}  // namespace ambulet
