// fuzz_infoplist: from a property list, all texts must be read or, if it is damaged, none. The
// input is used twice: as a file, and, split at its zero bytes, as keys and texts of a valid file.

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

// Reads any file.
void checkFile(std::string_view bytes) {
    static const QString processName = bundleOf("").displayName();
    const Bundle bundle = bundleOf(bytes);
    const auto identifier = bundle.identifier();
    require(bundle.identifier() == identifier, "it is read the same again");
    require(bundle.displayName() ==
                bundle.information(u"CFBundleDisplayName"_s).value_or(processName),
            "the process has the name where the bundle has none");
    const std::size_t end = bytes.rfind("</plist");
    if (identifier && end != bytes.npos) {
        require(!bundleOf(bytes.substr(0, end)).identifier(), "a cut file has no entries");
    }
}

// Whether XML can contain the text: it has no control characters, no lone surrogates, no U+FFFE and
// no U+FFFF. It must not have carriage returns either, which would be read as line feeds.
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
    for (auto entry = texts.cbegin(); entry != texts.cend(); ++entry) {
        require(bundle.information(entry.key()) == entry.value(), "a text that is there is read");
    }
    require(texts.contains(u"missing"_s) || !bundle.information(u"missing"_s),
            "a text that is not there is not read");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkFile(bytes);
    checkTexts({bytes.data(), static_cast<qsizetype>(bytes.size())});
    return 0;
}
