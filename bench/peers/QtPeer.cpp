// peer_qt FILE: prints the days of an export, read with QXmlStreamReader.

#include "Peer.h"
#include "import/steps/StepRecord.h"

#include <QFile>
#include <QXmlStreamReader>

using namespace ambulet;

int main(int argc, char** argv) {
    QFile file(argc == 2 ? QFile::decodeName(argv[1]) : QString());
    if (!file.open(QIODevice::ReadOnly)) {
        return 2;
    }
    const QLatin1String type(StepRecord::type.data(), StepRecord::type.size());
    StepSums sums;
    QXmlStreamReader reader(&file);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement ||
            reader.qualifiedName() != QLatin1String("Record")) {
            continue;
        }
        const QXmlStreamAttributes attributes = reader.attributes();
        if (attributes.value(QLatin1String(StepRecord::typeAttribute)) == type) {
            const QByteArray startDate =
                attributes.value(QLatin1String(StepRecord::startDateAttribute)).toUtf8();
            const QByteArray value =
                attributes.value(QLatin1String(StepRecord::valueAttribute)).toUtf8();
            sums.add(startDate.toStdString(), value.toStdString());
        }
    }
    printDays(sums);
    return reader.hasError() ? 1 : 0;
}
