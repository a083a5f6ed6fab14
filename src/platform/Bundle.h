#pragma once

#include <QString>

#include <optional>

namespace ambulet {

/// The application's bundle: its information dictionary and its resource files. Nothing is cached;
/// every call reads afresh. Any thread.
class Bundle {
  public:
    /// `infoPlist`: an XML property list with a dictionary at its top. A file that is missing or
    /// not well-formed has no entries. `resources`: the resource folder.
    Bundle(QString infoPlist, QString resources);

    /// The application's own: on macOS its bundle (the application object must exist), elsewhere
    /// what is compiled in.
    static const Bundle& main();

    /// The text under `key` in the information dictionary; it may be empty. None where there is no
    /// such key, or its value is no text.
    std::optional<QString> information(const QString& key) const;

    /// The text under CFBundleIdentifier.
    std::optional<QString> identifier() const;

    /// The application's name as users see it: the text under CFBundleDisplayName, else the name
    /// of the process.
    QString displayName() const;

    /// The path of the file `name`.`type` in the resource folder, or in its folder `directory` if
    /// one is given; none where there is no such file. It may be a path of Qt's resource system
    /// (":/...").
    std::optional<QString> resourcePath(const QString& name, const QString& type,
                                        const QString& directory = {}) const;

  private:
    QString _infoPlist;
    QString _resources;
};

}  // namespace ambulet
