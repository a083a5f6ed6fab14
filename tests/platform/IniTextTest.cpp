#include "platform/IniText.h"

#include "TestFolder.h"

#include <QSettings>
#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

QList<QVariant> values() {
    QByteArray everyByte;
    for (int byte = 0; byte < 256; ++byte) {
        everyByte.append(static_cast<char>(byte));
    }
    QString everyCharacter;
    for (char16_t code = 0; code < 0x180; ++code) {
        everyCharacter += QChar(code);
    }
    return {u""_s,
            u"2.5"_s,
            u"/home/me/export.xml"_s,
            u"/home/me/Steps, 2024;more/a=b [c]#.xml"_s,
            u"  blanks at both ends  "_s,
            u"\"quoted\" and 'so' on\\"_s,
            u"line\nfeed\rand\r\nboth\ttab"_s,
            u"a\u0001a\u0001g\u001f0"_s,
            u"/走步/😀/Экспорт.xml"_s,
            u"@"_s,
            u"@@ByteArray(no data)"_s,
            u"@Invalid()"_s,
            u"%20"_s,
            u"\u00a0blanks outside ASCII\u2003"_s,
            everyCharacter,
            QByteArray(),
            everyByte,
            QByteArray(1000, ','),
            QByteArray("\0a\0\1\0f", 6)};
}

// QSettings is an independent implementation of the format.
TEST(IniText, readsWhatQSettingsHasWritten) {
    const TestFolder folder;
    const QString file = folder.path(u"settings.ini"_s);
    QList<QVariant> expected = values();
    expected.append(QVariant());
    {
        QSettings settings(file, QSettings::IniFormat);
        for (qsizetype i = 0; i < expected.size(); ++i) {
            settings.setValue(u"key%1"_s.arg(i), expected[i]);
        }
    }
    const IniText text(contentOf(file));
    for (qsizetype i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(text.value(u"key%1"_s.arg(i)), expected[i]) << i;
    }
}

TEST(IniText, writesWhatQSettingsReads) {
    const TestFolder folder;
    const QList<QVariant> expected = values();
    IniText text("");
    for (qsizetype i = 0; i < expected.size(); ++i) {
        text.setValue(u"key%1"_s.arg(i), expected[i]);
    }
    const QString file = folder.write(u"settings.ini"_s, text.content());
    const QSettings settings(file, QSettings::IniFormat);
    for (qsizetype i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(settings.value(u"key%1"_s.arg(i)), expected[i]) << i;
    }
}

TEST(IniText, readsWhatItWrote) {
    QList<QVariant> all = values();
    all.append(QString(QChar(0xd83d)) + u"alone"_s);
    for (const QVariant& value : all) {
        IniText text("");
        text.setValue(u"key"_s, value);
        const QByteArray content = text.content();
        EXPECT_EQ(IniText(content).value(u"key"_s), value) << content.toStdString();
        EXPECT_EQ(content.count('\n'), 2) << content.toStdString();
    }
}

TEST(IniText, readsWhatWasWrittenByHand) {
    const struct {
        QByteArray line;
        QString value;
    } cases[] = {
        {"key=a", u"a"_s},
        {"  key  =  a b  ", u"a b"_s},
        {"key=a\r", u"a"_s},
        {"key=\" a \" ", u" a "_s},
        {"key=a, b,,c", u"a, b,,c"_s},
        {"key=a=b", u"a=b"_s},
        {"key=\"a", u"a"_s},
        {"key=a\\", u"a\\"_s},
        {"key=\\x41\\102\\q", u"ABq"_s},
        {"key=", u""_s},
        {"key=Zo\xc3\xab", u"Zoë"_s},
    };
    for (const auto& [line, value] : cases) {
        EXPECT_EQ(IniText("[General]\n" + line + '\n').value(u"key"_s), value)
            << line.toStdString();
    }
}

TEST(IniText, onlyTheGeneralSectionIsReadAndTheLastOfEqualKeysWins) {
    EXPECT_EQ(IniText("key=1").value(u"key"_s), u"1"_s);
    EXPECT_EQ(IniText("[general]\nkey=1\nkey=2").value(u"key"_s), u"2"_s);
    EXPECT_EQ(IniText("[General]\nkey=1\n[Other]\nkey=2\n[General]\n").value(u"key"_s), u"1"_s);
    EXPECT_EQ(IniText("[Other]\nkey=2\n").value(u"key"_s), std::nullopt);
    EXPECT_EQ(IniText("[General]\n;key=2\nkey\nkeys=1\n").value(u"key"_s), std::nullopt);
}

TEST(IniText, aWriteKeepsAllOtherLines) {
    IniText text("# comment\n[General]\na=1\nb = 2\n\n\xff\xfe no sense\n[Other]\na=3");
    text.setValue(u"b"_s, u"new"_s);
    text.setValue(u"c"_s, u"added"_s);
    EXPECT_EQ(text.content(),
              "# comment\n[General]\na=1\nb=new\n\n\xff\xfe no sense\n[Other]\na=3\n"
              "[General]\nc=added\n");
    EXPECT_EQ(text.value(u"a"_s), u"1"_s);
}

}  // namespace

}  // namespace ambulet
