#include "settings/SettingsStore.h"

#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "base/Text.h"
#include "naming/Paths.h"
#include "platform/ProfileFile.h"
#include "platform/ProgramPaths.h"
#include "settings/SettingsKeys.h"

namespace {

constexpr qsizetype LongestValue = 2047;

QString chosenFile(const ProgramPaths &paths, const QString &fileName)
{
    if (!fileName.isEmpty())
        return fileName;
    return withClosingSeparator(paths.SettingsFolder) + paths.ProgramBaseName + QStringLiteral(".ini");
}

} // namespace

QString SettingsStore::SettingsFilePath() const
{
    return m_paths.SettingsFilePath();
}

QString SettingsStore::ReadIniValue(const QString &section, const QString &key, const QString &defaultValue,
                                    const QString &fileName) const
{
    const QString stored = ProfileFile::value(section, key, defaultValue, chosenFile(m_paths, fileName));
    return trimBlanks(withoutNul(stored.left(LongestValue)));
}

qint32 SettingsStore::WriteIniValue(const QString &section, const QString &key, const QString &value,
                                    const QString &fileName) const
{
    const QString cleaned = trimBlanks(withoutNul(value));
    const QString file = chosenFile(m_paths, fileName);
    if (key.isEmpty())
        return ProfileFile::removeSection(section, file);
    return ProfileFile::setValue(section, key, cleaned.isEmpty() ? std::nullopt : std::optional(cleaned),
                                 file);
}

QString SettingsStore::read(const IniKey &key) const
{
    return ReadIniValue(key.section, key.key, key.defaultValue, SettingsFilePath());
}

void SettingsStore::write(const IniKey &key, const QString &value) const
{
    WriteIniValue(key.section, key.key, value, SettingsFilePath());
}

bool SettingsStore::readYesUnlessNo(const IniKey &key) const
{
    try {
        return toYesNo(read(key));
    } catch (const RunTimeFailure &) {
        return true;
    }
}

bool SettingsStore::ReadSaveID3Option() const
{
    return readYesUnlessNo(Ini::SaveID3);
}

bool SettingsStore::ReadOpenExplorerOption() const
{
    return readYesUnlessNo(Ini::OpenExplorer);
}

bool SettingsStore::ReadDownloadFreeDBOption() const
{
    return readYesUnlessNo(Ini::DownloadFreeDB);
}

QString SettingsStore::defaultFolder(const QString &name) const
{
    return m_paths.ProgramFolder + PathSeparator + name + PathSeparator;
}
