#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

/// A folder that is removed with everything in it at the end of the test.
class TemporaryFolder {
  public:
    TemporaryFolder() { EXPECT_TRUE(_folder.isValid()); }

    QString path() const { return _folder.path(); }
    QString path(const QString& name) const { return _folder.filePath(name); }

    /// Writes the file, making the folders above it where they are missing; its path.
    QString write(const QString& name, const QByteArray& content = "x") const {
        QString file = path(name);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        QFile written(file);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        EXPECT_EQ(written.write(content), content.size());
        return file;
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
    QTemporaryDir _folder;
};

inline QByteArray contentOf(const QString& file) {
    QFile opened(file);
    EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
    return opened.readAll();
}

/// The permission bits.
inline unsigned modeOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
    return status.st_mode & 07777U;
}

inline void setMode(const QString& path, unsigned mode) {
    EXPECT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
}
