#pragma once

#include "platform/Bundle.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace ambulet {

/// A bundle without resources. Its information can be changed.
class ChangingBundle {
  public:
    ChangingBundle(const QString& displayName, const QString& version) {
        change(displayName, version);
    }

    void change(const QString& displayName, const QString& version) const {
        QFile file(_folder.filePath(QStringLiteral("Info.plist")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("<plist><dict><key>CFBundleDisplayName</key><string>%1</string>"
                                  "<key>CFBundleShortVersionString</key><string>%2</string>"
                                  "</dict></plist>")
                       .arg(displayName, version)
                       .toUtf8());
        file.close();
        ASSERT_EQ(bundle.displayName(), displayName);
    }

  private:
    QTemporaryDir _folder;

  public:
    const Bundle bundle{_folder.filePath(QStringLiteral("Info.plist")), _folder.path()};
};

}  // namespace ambulet
