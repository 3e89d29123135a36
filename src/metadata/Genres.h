#pragma once

#include <QString>

class DropDownList;
class NCTAudioInformation;

/// Fills a list with the genre names, so that a row is the genre's index, and chooses the first.
void fillGenres(DropDownList &list, const NCTAudioInformation &AInfo);

/// The last index whose name is this one, letter case and blanks around it aside; 0 where none is.
qint16 GenreIndexFromName(const QString &name, const NCTAudioInformation &AInfo);
