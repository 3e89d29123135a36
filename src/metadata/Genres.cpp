#include "metadata/Genres.h"

#include "base/Text.h"
#include "components/NCTAudioInformation.h"

qint16 GenreIndexFromName(const QString &name, const NCTAudioInformation &AInfo)
{
    const QString wanted = trimBlanks(name).toLower();
    qint16 found = 0;
    for (qint16 index = 0; index < NCTAudioInformation::GenreCount; ++index) {
        if (trimBlanks(AInfo.GenreName(index)).toLower() == wanted)
            found = index;
    }
    return found;
}
