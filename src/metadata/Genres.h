#pragma once

#include <QString>

class NCTAudioInformation;

/// The last index whose name is this one, letter case and blanks around it aside; 0 where none is.
qint16 GenreIndexFromName(const QString &name, const NCTAudioInformation &AInfo);
