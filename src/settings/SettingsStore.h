#pragma once

#include <QString>
#include <vector>

class Profile;
struct ProgramPaths;

/// A key of settings.ini and what its readers take where it is missing.
struct IniKey
{
    IniKey(const char *section, const char *key, const char *defaultValue)
        : section(QString::fromLatin1(section)),
          key(QString::fromLatin1(key)),
          defaultValue(QString::fromLatin1(defaultValue))
    {}
    IniKey(QString section, QString key, QString defaultValue)
        : section(std::move(section)), key(std::move(key)), defaultValue(std::move(defaultValue))
    {}

    QString section;
    QString key;
    QString defaultValue;
};

/// settings.ini, the only store of options. Nothing of it is kept in memory: each call opens the file. No
/// failure of a single reading or writing is ever shown. A file that holds a password can be read by its
/// owner alone.
class SettingsStore
{
public:
    /// While it lives, what is written to the store is gathered; readers see nothing of it. `commit` stores
    /// all of that together or, where it raises a failure, nothing. Without `commit` nothing is stored. One
    /// at a time.
    class Transaction
    {
    public:
        explicit Transaction(const SettingsStore &store);
        ~Transaction();
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;
        void commit();

    private:
        friend class SettingsStore;
        struct Change
        {
            QString section, key, value;
        };

        const SettingsStore &m_store;
        std::vector<Change> m_changes;
    };

    /// `paths` must outlive the store.
    explicit SettingsStore(const ProgramPaths &paths) : m_paths(paths) {}

    QString SettingsFilePath() const;

    /// The stored value, at most 2047 characters, without NUL characters and blanks at its ends. A key that
    /// exists with an empty value gives an empty text. An empty `fileName` stands for the file beside the
    /// program that bears the program's name.
    QString ReadIniValue(const QString &section, const QString &key, const QString &defaultValue,
                         const QString &fileName) const;
    /// Stores the value without NUL characters and blanks at its ends; an empty one removes the key, an empty
    /// key the section. Not 0 for success.
    qint32 WriteIniValue(const QString &section, const QString &key, const QString &value,
                         const QString &fileName) const;

    /// The same on settings.ini.
    QString read(const IniKey &key) const;
    void write(const IniKey &key, const QString &value) const;

    /// Yes where the stored text is neither yes nor no.
    bool ReadSaveID3Option() const;
    bool ReadOpenExplorerOption() const;
    bool ReadDownloadFreeDBOption() const;

    /// ProgramFolder, the separator, `name`, the separator: the default of a format's output folder.
    QString defaultFolder(const QString &name) const;

    const ProgramPaths &paths() const { return m_paths; }

private:
    bool readYesUnlessNo(const IniKey &key) const;

    const ProgramPaths &m_paths;
    mutable Transaction *m_transaction = nullptr;
};
