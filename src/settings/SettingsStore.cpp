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

void store(Profile &profile, const QString &section, const QString &key, const QString &value)
{
    const QString cleaned = trimBlanks(withoutNul(value));
    if (key.isEmpty())
        profile.removeSection(section);
    else
        profile.set(section, key, cleaned.isEmpty() ? std::nullopt : std::optional(cleaned));
}

files::Access accessTo(const Profile &profile)
{
    const bool secret =
        !profile.value(Ini::ProxyPassword.section, Ini::ProxyPassword.key).value_or(QString()).isEmpty();
    return secret ? files::Access::OwnerOnly : files::Access::AsUsual;
}

} // namespace

SettingsStore::Transaction::Transaction(const SettingsStore &store) : m_store(store)
{
    store.m_transaction = this;
}

SettingsStore::Transaction::~Transaction()
{
    m_store.m_transaction = nullptr;
}

void SettingsStore::Transaction::commit()
{
    m_store.m_transaction = nullptr;
    ProfileFile::change(m_store.SettingsFilePath(), [this](Profile &profile) {
        for (const Change &change : m_changes)
            store(profile, change.section, change.key, change.value);
        return accessTo(profile);
    });
}

QString SettingsStore::SettingsFilePath() const
{
    return m_paths.SettingsFilePath();
}

QString SettingsStore::ReadIniValue(const QString &section, const QString &key, const QString &defaultValue,
                                    const QString &fileName) const
{
    const Profile profile = ProfileFile::read(chosenFile(m_paths, fileName));
    const QString stored = profile.value(section, key).value_or(defaultValue);
    return trimBlanks(withoutNul(stored.left(LongestValue)));
}

qint32 SettingsStore::WriteIniValue(const QString &section, const QString &key, const QString &value,
                                    const QString &fileName) const
{
    try {
        ProfileFile::change(chosenFile(m_paths, fileName), [&](Profile &profile) {
            store(profile, section, key, value);
            return accessTo(profile);
        });
        return 1;
    } catch (const RunTimeFailure &) {
        return 0;
    }
}

QString SettingsStore::read(const IniKey &key) const
{
    return ReadIniValue(key.section, key.key, key.defaultValue, SettingsFilePath());
}

void SettingsStore::write(const IniKey &key, const QString &value) const
{
    if (m_transaction)
        m_transaction->m_changes.push_back({key.section, key.key, value});
    else
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
