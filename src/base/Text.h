#pragma once

#include <QString>
#include <QStringList>

/// Text rules of the whole program. A blank is U+0020 and nothing else.

/// The title of every message box that names no title of its own.
inline const QString ProgramTitle = QStringLiteral("TONELIFT");
/// The product's name as people read it.
inline const QString ProductName = QStringLiteral("Tonelift");

/// The separator of joined lists: track titles, track offsets.
inline constexpr QChar ListSeparator = u'|';

/// The separator between folders, on this system. Functions on paths take it as a last, defaulted argument.
#ifdef Q_OS_WIN
inline constexpr QChar PathSeparator = u'\\';
#else
inline constexpr QChar PathSeparator = u'/';
#endif

/// Without the blanks at both ends; other white space stays.
QString trimBlanks(const QString &text);

/// Without its NUL characters.
QString withoutNul(QString text);

/// The parts between separators; an empty text has none.
QStringList splitText(const QString &text, const QString &separator);
inline QStringList splitText(const QString &text, QChar separator)
{
    return splitText(text, QString(separator));
}
