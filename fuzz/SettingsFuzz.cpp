// fuzz_settings: IniText must read the values that it sets in any settings file, and change nothing
// else in the file. IniText and QSettings must read the values that the other one writes. The input
// consists of the file, a zero byte, a text, a zero byte, and data.

#include "Rule.h"
#include "platform/IniText.h"
#include "platform/SettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QSettings>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>

using namespace ambulet;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

// The parts of an input. Missing ones are empty. The data may contain zero bytes.
struct Input {
    QByteArray file;
    QString text;
    QByteArray data;
};

Input parted(const QByteArray& bytes) {
    const qsizetype first = bytes.indexOf('\0');
    const qsizetype second = first < 0 ? -1 : bytes.indexOf('\0', first + 1);
    if (first < 0) {
        return {bytes, u""_s, ""};
    }
    const qsizetype end = second < 0 ? bytes.size() : second;
    return {bytes.first(first), QString::fromUtf8(bytes.sliced(first + 1, end - first - 1)),
            second < 0 ? QByteArray("") : bytes.sliced(second + 1)};
}

// The number of lines of `before` that are different in `after`. `after` may have additional lines.
qsizetype changedLines(const QByteArray& before, const QByteArray& after) {
    const QList<QByteArray> old = (before.endsWith('\n') ? before.chopped(1) : before).split('\n');
    const QList<QByteArray> fresh = after.split('\n');
    qsizetype changed = 0;
    for (qsizetype i = 0; i < old.size(); ++i) {
        changed += i < fresh.size() && old[i] == fresh[i] ? 0 : 1;
    }
    return changed;
}

void checkSetting(const QByteArray& file, const QString& key, const QVariant& value) {
    const QString others[] = {u"xmlFilePath"_s, u"xmlFileBookmark"_s, u"strideFootLength"_s};
    const IniText before(file);
    IniText text(file);
    text.setValue(key, value);
    const IniText after(text.content());
    require(after.value(key) == value, "a value that is set is read again");
    for (const QString& other : others) {
        require(other == key || after.value(other) == before.value(other),
                "setting a value does not change the values of other keys");
    }
    require(file.isEmpty() || changedLines(file, text.content()) <= (before.value(key) ? 1 : 0),
            "setting a value does not change other lines");
    IniText again(text.content());
    again.setValue(key, value);
    require(again.content() == text.content(), "setting the same value changes nothing");
}

// QSettings stands for other programs that read and write settings files.
void checkWithQt(const TemporaryFolder& folder, const Input& input) {
    IniText text({});
    text.setValue(u"text"_s, input.text);
    text.setValue(u"data"_s, input.data);
    const QByteArray content = text.content();
    // The name is new each time, because QSettings caches files.
    static unsigned number = 0;
    const auto file = folder.write(std::to_string(++number) + ".ini",
                                   {content.constData(), std::size_t(content.size())});
    const QString path = QString::fromStdString(file);
    {
        QSettings settings(path, QSettings::IniFormat);
        require(settings.value(u"text"_s).toString() == input.text, "QSettings reads the text");
        require(settings.value(u"data"_s).toByteArray() == input.data, "QSettings reads the data");
        settings.clear();
        settings.setValue(u"data"_s, input.data);
        settings.setValue(u"text"_s, input.text);
    }
    SettingsStore store(path);
    require(store.value(u"text"_s) == QVariant(input.text), "the text of QSettings is read");
    require(store.value(u"data"_s) == QVariant(input.data), "the data of QSettings is read");
    std::filesystem::remove(file);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const TemporaryFolder folder;
    const Input input = parted({reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
    checkSetting(input.file, u"xmlFilePath"_s, input.text);
    checkSetting(input.file, u"xmlFileBookmark"_s, input.data);
    checkWithQt(folder, input);
    return 0;
}
