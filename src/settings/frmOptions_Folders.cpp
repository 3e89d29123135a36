#include "base/Text.h"
#include "settings/Folders.h"
#include "settings/SettingsKeys.h"
#include "settings/frmOptions.h"

QLineEdit &frmOptions::folderBox(const Format &format) const
{
    switch (format.encType) {
    case EncMP3:
        return *txtMP3Folder;
    case EncWAV:
        return *txtWAVDirectory;
    case EncOGG:
        return *txtOGGDirectory;
    case EncWMA:
        return *txtWMADirectory;
    case EncVQF:
        break;
    }
    return *txtVQFDirectory;
}

void frmOptions::loadFoldersPage()
{
    for (const Format &format : Formats::all())
        folderBox(format).setText(m_store.read(Ini::outputDirectory(m_store, format)));
}

void frmOptions::saveFoldersPage() const
{
    for (const Format &format : Formats::all())
        m_store.write(Ini::outputDirectory(m_store, format), folderBox(format).text());
}

void frmOptions::resetFoldersPage()
{
    for (const Format &format : Formats::all())
        folderBox(format).setText(Ini::outputDirectory(m_store, format).defaultValue);
}

void frmOptions::pickFolder(QLineEdit &box)
{
    const QString path = BrowseForFolder(desktop().dialogs, this);
    if (!path.isEmpty())
        box.setText(trimBlanks(path).endsWith(PathSeparator) ? path : path + PathSeparator);
}
