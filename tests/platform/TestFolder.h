#pragma once

#include "support/TemporaryFolder.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>

namespace ambulet {

/// A temporary folder with Qt's types, and with functions that put files into it.
class TestFolder {
  public:
    QString path() const { return QString::fromStdString(_folder.path()); }
    QString path(const QString& name) const { return path() + u'/' + name; }

    /// Writes a file, and creates missing folders above it. Returns its path.
    QString write(const QString& name, const QByteArray& content = "x") const {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
        _folder.write(name.toStdString(), content.toStdString());
        return path(name);
    }

    QString makeFolder(const QString& name) const {
        EXPECT_TRUE(QDir().mkpath(path(name)));
        return path(name);
    }

    QString makeFIFO(const QString& name) const {
        EXPECT_EQ(::mkfifo(QFile::encodeName(path(name)).constData(), 0600), 0);
        return path(name);
    }

  private:
    TemporaryFolder _folder;
};

/// A path in the encoding of the file system.
inline std::string bytes(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

inline QByteArray contentOf(const QString& file) {
    QFile opened(file);
    EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
    return opened.readAll();
}

/// The permission bits.
inline unsigned modeOf(const QString& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
    return status.st_mode & 07777U;
}

inline void setMode(const QString& path, unsigned mode) {
    EXPECT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
}

}  // namespace ambulet
