#pragma once

#include <QString>

#include <optional>

namespace ambulet {

/// What the application's bundle says of the application, and the files that come with it. Nothing
/// is kept: every call reads afresh. Any thread.
class Bundle {
  public:
    /// `infoPlist`: an XML property list with a dictionary at its top; one that is missing or not
    /// well-formed has no entries. `resources`: the folder of the resources.
    Bundle(QString infoPlist, QString resources);

    /// The application's own: on macOS its bundle (the application object must exist), elsewhere
    /// what is compiled in.
    static const Bundle& main();

    /// The text under `key` in the information dictionary, also an empty one; none where there is
    /// no such key or no text under it.
    std::optional<QString> information(const QString& key) const;

    /// The text under CFBundleIdentifier.
    std::optional<QString> identifier() const;

    /// The application's name for its user: the text under CFBundleDisplayName, else the name of
    /// the process.
    QString displayName() const;

    /// The path of the resource file `name`.`type` in the folder `directory` of the resources, or
    /// at their top where none is named; none where there is no such file. The path may be one of
    /// Qt's resource system (":/...").
    std::optional<QString> resourcePath(const QString& name, const QString& type,
                                        const QString& directory = {}) const;

  private:
    QString _infoPlist;
    QString _resources;
};

}  // namespace ambulet
