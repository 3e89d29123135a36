#pragma once

#include <QByteArrayList>
#include <QString>
#include <optional>

/// The lines "[section]" and "key=value" of a profile file.
///
/// Names are found without regard to letter case and blanks around them; of two equal sections or keys the
/// first one counts. Comments (";"), lines of no meaning, bytes of no known character and the order of all
/// lines stay as they are, and so do the file's line ends and its encoding: UTF-8 with or without a mark at
/// its start, or UTF-16 of either order of bytes.
class Profile
{
public:
    explicit Profile(const QByteArray &content);

    /// What a file of these lines holds, in the encoding that it came in.
    QByteArray content() const;
    /// Whether `content` gives back all that there was. Text in UTF-16 that is damaged can't be kept.
    bool isFaithful() const { return m_faithful; }

    /// The value without the blanks around it and without one pair of matching quotes round it; none where
    /// section or key is missing.
    std::optional<QString> value(const QString &section, const QString &key) const;
    /// Sets the value, or removes the key where there is none. The section comes into being as needed.
    void set(const QString &section, const QString &key, const std::optional<QString> &value);
    void removeSection(const QString &section);

private:
    enum class Encoding { Utf8, Utf16LittleEnd, Utf16BigEnd };

    QByteArray decoded(const QByteArray &content);
    QByteArray encoded(const QByteArray &text) const;
    qsizetype sectionLine(const QString &section) const;
    qsizetype endOfSection(qsizetype head) const;
    qsizetype endOfEntries(qsizetype head) const;
    qsizetype keyLine(qsizetype head, const QString &key) const;

    Encoding m_encoding = Encoding::Utf8;
    QByteArray m_mark;
    bool m_faithful = true;
    QByteArrayList m_lines; ///< in UTF-8, each without its line end
    QByteArray m_lineEnd;
};
