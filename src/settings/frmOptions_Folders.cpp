#include "base/Text.h"
#include "settings/Folders.h"
#include "settings/SettingsKeys.h"
#include "settings/frmOptions.h"

std::array<frmOptions::Folder, 5> frmOptions::foldersInLoadOrder() const
{
    return {{{QStringLiteral("MP3"), txtMP3Folder},
             {QStringLiteral("WMA"), txtWMADirectory},
             {QStringLiteral("WAV"), txtWAVDirectory},
             {QStringLiteral("OGG"), txtOGGDirectory},
             {QStringLiteral("VQF"), txtVQFDirectory}}};
}

std::array<frmOptions::Folder, 5> frmOptions::foldersInSaveOrder() const
{
    return {{{QStringLiteral("MP3"), txtMP3Folder},
             {QStringLiteral("WAV"), txtWAVDirectory},
             {QStringLiteral("WMA"), txtWMADirectory},
             {QStringLiteral("VQF"), txtVQFDirectory},
             {QStringLiteral("OGG"), txtOGGDirectory}}};
}

void frmOptions::loadFoldersPage()
{
    for (const Folder &folder : foldersInLoadOrder())
        folder.box->setText(m_store.read(Ini::outputDirectory(m_store, folder.format)));
}

void frmOptions::saveFoldersPage() const
{
    for (const Folder &folder : foldersInSaveOrder())
        m_store.write(Ini::outputDirectory(m_store, folder.format), folder.box->text());
}

void frmOptions::resetFoldersPage()
{
    for (const Folder &folder : foldersInLoadOrder())
        folder.box->setText(m_store.defaultFolder(folder.format.toLower()));
}

void frmOptions::pickFolder(QLineEdit &box)
{
    const QString path = BrowseForFolder(desktop().dialogs, this);
    if (!path.isEmpty())
        box.setText(trimBlanks(path).endsWith(PathSeparator) ? path : path + PathSeparator);
}
