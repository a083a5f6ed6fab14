#include "platform/UserDefaults.h"

#include "TestFolder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

class UserDefaultsTest : public testing::Test {
  protected:
    // The defaults as the next run of the program reads them.
    UserDefaults later() const { return UserDefaults(_file); }

    UserDefaults withFile(const QByteArray& content) const {
        return UserDefaults(_folder.write(u"given.ini"_s, content));
    }

    TestFolder _folder;
    const QString _file = _folder.path(u"settings.ini"_s);
    UserDefaults _defaults{_file};
};

TEST_F(UserDefaultsTest, aKeyWithoutAValueOrADefaultReadsAsNothing) {
    EXPECT_EQ(_defaults.string(u"key"_s), std::nullopt);
    EXPECT_EQ(_defaults.data(u"key"_s), std::nullopt);
    EXPECT_EQ(_defaults.persistent(u"key"_s), std::nullopt);
    EXPECT_EQ(_defaults.doubleForKey(u"key"_s), 0);
}

TEST_F(UserDefaultsTest, aRegisteredDefaultIsReadUntilAValueIsStored) {
    _defaults.registerDefaults({{u"strideFootLength"_s, 2.5}});
    EXPECT_EQ(_defaults.doubleForKey(u"strideFootLength"_s), 2.5);
    _defaults.setDouble(u"strideFootLength"_s, 3);
    EXPECT_EQ(_defaults.doubleForKey(u"strideFootLength"_s), 3);
}

TEST_F(UserDefaultsTest, defaultsCanBeRegisteredForTextAndDataToo) {
    _defaults.registerDefaults({{u"text"_s, u"a"_s}, {u"data"_s, QByteArray("b")}});
    EXPECT_EQ(_defaults.string(u"text"_s), u"a"_s);
    EXPECT_EQ(_defaults.data(u"data"_s), QByteArray("b"));
}

TEST_F(UserDefaultsTest, aRegisteredDefaultIsNeverPersistent) {
    _defaults.registerDefaults({{u"xmlFilePath"_s, u"/registered"_s}});
    EXPECT_EQ(_defaults.string(u"xmlFilePath"_s), u"/registered"_s);
    EXPECT_EQ(_defaults.persistent(u"xmlFilePath"_s), std::nullopt);
}

TEST_F(UserDefaultsTest, aRegisteredDefaultIsNotStored) {
    _defaults.registerDefaults({{u"strideFootLength"_s, 2.5}});
    _defaults.setString(u"other"_s, u"x"_s);
    EXPECT_EQ(later().persistent(u"strideFootLength"_s), std::nullopt);
}

TEST_F(UserDefaultsTest, aLaterRegistrationReplacesOnlyItsOwnKeys) {
    _defaults.registerDefaults({{u"a"_s, 1.0}, {u"b"_s, 2.0}});
    _defaults.registerDefaults({{u"b"_s, 3.0}});
    EXPECT_EQ(_defaults.doubleForKey(u"a"_s), 1);
    EXPECT_EQ(_defaults.doubleForKey(u"b"_s), 3);
}

TEST_F(UserDefaultsTest, aStoredEmptyTextIsPersistent) {
    _defaults.setString(u"xmlFilePath"_s, u""_s);
    EXPECT_EQ(_defaults.persistent(u"xmlFilePath"_s), u""_s);
    EXPECT_EQ(later().persistent(u"xmlFilePath"_s), u""_s);
    EXPECT_EQ(withFile("[General]\nxmlFilePath=\n").persistent(u"xmlFilePath"_s), u""_s);
}

TEST_F(UserDefaultsTest, aStoredValueOfAnyKindIsPersistent) {
    _defaults.setData(u"data"_s, QByteArray("\0\1", 2));
    EXPECT_TRUE(_defaults.persistent(u"data"_s).has_value());
    EXPECT_TRUE(withFile("[General]\nodd=@Invalid()\n").persistent(u"odd"_s).has_value());
}

TEST_F(UserDefaultsTest, aTextIsReadAsItWasStored) {
    const QStringList texts = {
        u"/home/me/export.xml"_s,
        u"/home/me/Steps, 2024,more/export.xml"_s,
        u"/home/100%/%20/%41%/export.xml"_s,
        u"/home/Zoë/走步/😀/Экспорт.xml"_s,
        u"  /leading and trailing blanks  "_s,
        u"\t/tab"_s,
        u"\"/quoted\" and 'so' on\\"_s,
        u"/line\nfeed\rand\r\nboth"_s,
        u"@ByteArray(no data)"_s,
        u"@Invalid()"_s,
        u"@"_s,
        u";no comment"_s,
        u"#"_s,
        u"a=b;c=[d]"_s,
        u"\\x41\\n"_s,
        u","_s,
        u"2.5"_s,
        QString(1, QChar(0)) + u"/nul"_s,
    };
    for (const QString& text : texts) {
        _defaults.setString(u"text"_s, text);
        EXPECT_EQ(_defaults.string(u"text"_s), text) << text.toStdString();
        EXPECT_EQ(later().string(u"text"_s), text) << text.toStdString();
        EXPECT_EQ(later().persistent(u"text"_s), text) << text.toStdString();
    }
}

TEST_F(UserDefaultsTest, dataIsReadByteForByte) {
    QByteArray everyByte;
    for (int byte = 0; byte < 256; ++byte) {
        everyByte.append(static_cast<char>(byte));
    }
    for (const QByteArray& data : {QByteArray(), everyByte, QByteArray(100'000, ',')}) {
        _defaults.setData(u"xmlFileBookmark"_s, data);
        EXPECT_EQ(_defaults.data(u"xmlFileBookmark"_s), data);
        EXPECT_EQ(later().data(u"xmlFileBookmark"_s), data);
    }
}

TEST_F(UserDefaultsTest, aTextIsNotReadAsDataAndDataIsNotReadAsText) {
    _defaults.setString(u"text"_s, u"1"_s);
    _defaults.setData(u"data"_s, QByteArray("1"));
    EXPECT_EQ(_defaults.data(u"text"_s), std::nullopt);
    EXPECT_EQ(_defaults.string(u"data"_s), std::nullopt);
    EXPECT_EQ(_defaults.doubleForKey(u"data"_s), 0);
}

TEST_F(UserDefaultsTest, aDoubleIsReadExactly) {
    using Limits = std::numeric_limits<double>;
    for (const double value :
         {2.5, 2.6789, 0.1, 1.0 / 3, 3.0, 1e300, 1e-300, -2.5, Limits::max(), Limits::min(),
          Limits::denorm_min(), Limits::infinity(), -Limits::infinity()}) {
        _defaults.setDouble(u"strideFootLength"_s, value);
        const auto bits = std::bit_cast<std::uint64_t>(value);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(_defaults.doubleForKey(u"strideFootLength"_s)), bits)
            << value;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(later().doubleForKey(u"strideFootLength"_s)), bits)
            << value;
    }
}

TEST_F(UserDefaultsTest, aStoredNaNReadsAsZero) {
    _defaults.setDouble(u"strideFootLength"_s, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(_defaults.doubleForKey(u"strideFootLength"_s), 0);
    EXPECT_EQ(later().doubleForKey(u"strideFootLength"_s), 0);
}

TEST_F(UserDefaultsTest, aNumberIsReadFromTheStartOfATextWrittenByHand) {
    const struct {
        QByteArray written;
        double read;
    } cases[] = {
        {"3", 3},
        {"2.6789", 2.6789},
        {"\"  2.5\"", 2.5},
        {"\"\\t2.5\"", 2.5},
        {"+2.5", 2.5},
        {"-3", -3},
        {".5", 0.5},
        {"5.", 5},
        {"1e2", 100},
        {"25E-1x", 2.5},
        {"2e", 2},
        {"2e+", 2},
        {"2.5 feet", 2.5},
        {"1.2.3", 1.2},
        {"2,5", 2},
        {"\"2,5\"", 2},
        {"1e999", std::numeric_limits<double>::infinity()},
        {"1e-999", 0},
        {"", 0},
        {"abc", 0},
        {"x2.5", 0},
        {"- 3", 0},
        {".", 0},
        {".e1", 0},
        {"nan", 0},
        {"inf", 0},
        {"-inf", 0},
        {"infinity", 0},
        {"0x10", 0},
        {"\xd9\xa2", 0},  // an Arabic-Indic two
    };
    for (const auto& [written, read] : cases) {
        UserDefaults defaults = withFile("[General]\nstrideFootLength=" + written + "\n");
        defaults.registerDefaults({{u"strideFootLength"_s, 7.0}});
        EXPECT_EQ(defaults.doubleForKey(u"strideFootLength"_s), read) << written.toStdString();
    }
}

TEST_F(UserDefaultsTest, aNumberIsReadTheSameInEveryLocale) {
    QLocale::setDefault(QLocale(QLocale::German));
    _defaults.setDouble(u"strideFootLength"_s, 1234.5);
    EXPECT_EQ(later().doubleForKey(u"strideFootLength"_s), 1234.5);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

TEST(UserDefaults, theStandardDefaultsAreInTheConfigurationFolderUnderTheBundleIdentifier) {
    UserDefaults::standard().setString(u"key"_s, u"value"_s);
    const QString file = qEnvironmentVariable("XDG_CONFIG_HOME") + u"/org.ambulet.DailySteps.ini"_s;
    EXPECT_EQ(contentOf(file), "[General]\nkey=value\n");
    EXPECT_EQ(UserDefaults::standard().persistent(u"key"_s), u"value"_s);
    EXPECT_TRUE(QFile::remove(file));
}

}  // namespace

}  // namespace ambulet
