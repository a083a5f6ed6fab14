#pragma once

#include <QString>

#include <optional>

namespace ambulet {

/// The application's bundle: its information dictionary and its resource files. Nothing is cached:
/// every call accesses the files again. Any thread.
class Bundle {
  public:
    /// `infoPlist`: the path of an XML property list that contains a dictionary. A missing or
    /// malformed file counts as an empty dictionary. `resources`: the path of the resource folder.
    Bundle(QString infoPlist, QString resources);

    /// The application's own bundle. On macOS the application object must exist. On other systems
    /// the bundle is compiled into the program.
    static const Bundle& main();

    /// The text under `key` in the information dictionary; the text may be empty. Nothing if there
    /// is no such key, or its value is not a text.
    std::optional<QString> information(const QString& key) const;

    /// The text under CFBundleIdentifier.
    std::optional<QString> identifier() const;

    /// The application's name for users: the text under CFBundleDisplayName; if there is none, the
    /// name of the process.
    QString displayName() const;

    /// The path of the file `name`.`type` in the resource folder, or in its subfolder `directory`.
    /// It may be a path of Qt's resource system (":/..."). Nothing if there is no such file.
    std::optional<QString> resourcePath(const QString& name, const QString& type,
                                        const QString& directory = {}) const;

  private:
    QString _infoPlist;
    QString _resources;
};

}  // namespace ambulet
