// fuzz_infoplist: all texts of a property list must be read, or none if the file is truncated. The
// input is used twice: as a file; and split at its zero bytes, as keys and texts of a valid file.

#include "Rule.h"
#include "platform/Bundle.h"
#include "support/TemporaryFolder.h"

#include <QHash>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cstdint>
#include <string_view>

using namespace ambulet;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

Bundle bundleOf(std::string_view bytes) {
    static const TemporaryFolder folder;
    const auto file = folder.write("Info.plist", bytes);
    return {QString::fromStdString(file), QString::fromStdString(folder.path())};
}

// Checks any file. Each question to a Bundle reads the file again, so only a few are asked.
void checkFile(std::string_view bytes) {
    static const QString processName = bundleOf("").displayName();
    const Bundle bundle = bundleOf(bytes);
    const bool readable = bundle.identifier().has_value();
    require(bundle.displayName() ==
                bundle.information(u"CFBundleDisplayName"_s).value_or(processName),
            "without a display name, the name is that of the process");
    const std::size_t end = bytes.rfind("</plist");
    if (readable && end != bytes.npos) {
        require(!bundleOf(bytes.substr(0, end)).identifier(), "a truncated file has no entries");
    }
}

// The text without the characters that XML does not allow: most control characters, U+FFFE and
// U+FFFF. Carriage returns are left out, too, because they would be read as line feeds.
QString plain(QByteArrayView bytes) {
    QString text = QString::fromUtf8(bytes);
    text.removeIf([](QChar c) {
        return (c < u' ' && c != u'\n' && c != u'\t') || c == QChar(0xfffe) || c == QChar(0xffff);
    });
    return text;
}

void checkTexts(const QByteArray& bytes) {
    QHash<QString, QString> texts;
    QByteArray list;
    QXmlStreamWriter writer(&list);
    writer.writeStartDocument();
    writer.writeStartElement(u"plist"_s);
    writer.writeStartElement(u"dict"_s);
    const QList<QByteArray> parts = bytes.split('\0');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString key = plain(parts[i]);
        const QString text = plain(parts[i + 1]);
        writer.writeTextElement(u"key"_s, key);
        writer.writeTextElement(u"string"_s, text);
        texts.insert(key, text);
    }
    writer.writeEndDocument();
    const Bundle bundle = bundleOf({list.constData(), std::size_t(list.size())});
    constexpr int mostRead = 3;
    int read = 0;
    for (auto entry = texts.cbegin(); entry != texts.cend() && read < mostRead; ++entry, ++read) {
        require(bundle.information(entry.key()) == entry.value(), "each text is read");
    }
    require(texts.contains(u"missing"_s) || !bundle.information(u"missing"_s),
            "a missing text is not read");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkFile(bytes);
    checkTexts({bytes.data(), static_cast<qsizetype>(bytes.size())});
    return 0;
}
