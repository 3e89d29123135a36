#include "engines/tagfile/GenreNames.h"

#include <QHash>
#include <iterator>

namespace {

/// What two spellings of a name have in common.
QString letters(QStringView name)
{
    QString kept;
    for (const QChar c : name) {
        if (c.isLetterOrNumber() || c == u'&' || c == u'+')
            kept.append(c.toLower());
    }
    return kept;
}

QHash<QString, qint16> spellings()
{
    QHash<QString, qint16> numbers;
    for (qint16 i = 0; i < std::ssize(GenreNames); ++i)
        numbers.insert(letters(GenreNames[i]), i);
    static constexpr std::pair<QStringView, qint16> others[] = {{u"Jazz-Funk", 29},
                                                                {u"Alternative Rock", 40},
                                                                {u"Alt. Rock", 40},
                                                                {u"Pop-Funk", 62},
                                                                {u"Native US", 64},
                                                                {u"Psychadelic", 67},
                                                                {u"Bebob", 85},
                                                                {u"A capella", 123},
                                                                {u"Drum and Bass", 127},
                                                                {u"Negerpunk", 133},
                                                                {u"Trash Metal", 144},
                                                                {u"Rock and Roll", 78},
                                                                {u"Rhythm and Blues", 14},
                                                                {u"Fusion Jazz", 30},
                                                                {u"Christian Gangsta", 136}};
    for (const auto &[name, number] : others)
        numbers.insert(letters(name), number);
    return numbers;
}

} // namespace

std::optional<qint16> genreNumber(const QString &text)
{
    static const QHash<QString, qint16> numbers = spellings();
    const auto known = numbers.constFind(letters(text));
    if (known != numbers.constEnd())
        return *known;
    QString digits = text.trimmed();
    if (digits.startsWith(u'('))
        digits = digits.mid(1, digits.indexOf(u')') - 1);
    bool ok = false;
    const int number = digits.toInt(&ok);
    return ok && number >= 0 && number <= 255 ? std::optional(static_cast<qint16>(number)) : std::nullopt;
}
