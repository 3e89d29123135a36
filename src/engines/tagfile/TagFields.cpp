#include "engines/tagfile/TagFields.h"

#include "base/Text.h"
#include "engines/tagfile/GenreNames.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace engines {

TagFields TagFields::writable() const
{
    const auto text = [](const QString &value) {
        return QString::fromUtf8(withoutNul(value).toUtf8()); // halves of a character become the mark for one
    };
    TagFields fields = *this;
    fields.title = text(title);
    fields.artist = text(artist);
    fields.album = text(album);
    fields.comment = text(comment);
    if (year < 0 || year > 9999)
        fields.year = 0;
    fields.genre = genreIndex(genre);
    fields.track = std::max<qint16>(track, 0);
    return fields;
}

qint32 leadingNumber(const QString &text, int digits)
{
    qint32 number = 0;
    for (const QChar c : text.left(digits)) {
        if (c < u'0' || c > u'9')
            break;
        number = number * 10 + c.digitValue();
    }
    return number;
}

QString yearText(qint32 year)
{
    return year > 0 ? QString::number(year).rightJustified(4, u'0') : QString();
}

qint16 genreIndex(int number)
{
    return number >= 0 && number < std::ssize(GenreNames) ? static_cast<qint16>(number)
                                                          : TagFields::OtherGenre;
}

qint16 trackNumber(const QString &text)
{
    return static_cast<qint16>(std::min(leadingNumber(text, 5), qint32(std::numeric_limits<qint16>::max())));
}

QString trackText(qint16 track, const QString &textSoFar)
{
    if (track == 0)
        return {};
    const qsizetype count = textSoFar.indexOf(u'/');
    return QString::number(track) + (count < 0 ? QString() : textSoFar.mid(count));
}

} // namespace engines
