#include "settings/GenreList.h"

#include "components/NCTAudioInformation.h"
#include "controls/DropDownList.h"

void fillGenres(DropDownList &list, const NCTAudioInformation &AInfo)
{
    list.clearEntries();
    for (qint16 index = 0; index < NCTAudioInformation::GenreCount; ++index)
        list.addEntry(AInfo.GenreName(index), index);
    list.setListIndex(0);
}
