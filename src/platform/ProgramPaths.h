#pragma once

#include <QString>

/// Where the program's own files lie. A folder has no closing separator unless it is a root.
struct ProgramPaths
{
    QString ProgramFolder;    ///< of settings.ini and of the default output folders
    QString ProgramBaseName;  ///< the executable's name without extension
    QString SettingsFolder;   ///< as ProgramFolder, but for an installed program
    QString DiscsFolder;      ///< of disc images that stand for drives
    QString ExecutableFolder; ///< of the executable itself, and of the help file

    /// Decides from the executable's path. Where the user may write into its folder and that is no system
    /// folder everything lies together there; otherwise settings lie in the user's configuration folder,
    /// default output folders in the music folder and disc images in the data folder.
    static ProgramPaths of(const QString &executable);

    /// SettingsFolder, the separator, "settings.ini".
    QString SettingsFilePath() const;
};
