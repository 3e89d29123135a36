#pragma once

#include <QStringList>
#include <ostream>

/// How gtest prints Qt's values.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    for (const QString &text : texts)
        *out << "\n  " << text.toStdString();
}
