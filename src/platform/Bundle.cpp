#include "platform/Bundle.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QXmlStreamReader>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// All texts of the dictionary in a property list; none if the file is missing or malformed.
QHash<QString, QString> textsOf(const QString& propertyList) {
    QFile file(propertyList);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QHash<QString, QString> texts;
    QXmlStreamReader xml(&file);
    if (xml.readNextStartElement() && xml.name() == "plist"_L1 && xml.readNextStartElement() &&
        xml.name() == "dict"_L1) {
        QString key;
        while (xml.readNextStartElement()) {
            if (xml.name() == "key"_L1) {
                key = xml.readElementText();
            } else if (xml.name() == "string"_L1) {
                texts.insert(key, xml.readElementText());
            } else {
                xml.skipCurrentElement();
            }
        }
    }
    while (!xml.atEnd()) {
        xml.readNext();
    }
    return xml.hasError() ? QHash<QString, QString>() : texts;
}

QString processName() {
#ifdef Q_OS_MACOS
    return QFile::decodeName(getprogname());
#else
    return QFile::decodeName(program_invocation_short_name);
#endif
}

}  // namespace

Bundle::Bundle(QString infoPlist, QString resources)
    : _infoPlist(std::move(infoPlist)), _resources(std::move(resources)) {}

const Bundle& Bundle::main() {
#ifdef Q_OS_MACOS
    static const QString contents = QCoreApplication::applicationDirPath() + "/.."_L1;
    static const Bundle bundle(contents + "/Info.plist"_L1, contents + "/Resources"_L1);
#else
    static const Bundle bundle(u":/Info.plist"_s, u":"_s);
#endif
    return bundle;
}

std::optional<QString> Bundle::information(const QString& key) const {
    const QHash<QString, QString> texts = textsOf(_infoPlist);
    const auto found = texts.find(key);
    return found == texts.end() ? std::nullopt : std::optional(*found);
}

std::optional<QString> Bundle::identifier() const {
    return information(u"CFBundleIdentifier"_s);
}

QString Bundle::displayName() const {
    const std::optional<QString> name = information(u"CFBundleDisplayName"_s);
    return name ? *name : processName();
}

std::optional<QString> Bundle::resourcePath(const QString& name, const QString& type,
                                            const QString& directory) const {
    QString path = _resources + u'/';
    if (!directory.isEmpty()) {
        path += directory + u'/';
    }
    path += name + u'.' + type;
    return QFileInfo(path).isFile() ? std::optional(path) : std::nullopt;
}

}  // namespace ambulet
