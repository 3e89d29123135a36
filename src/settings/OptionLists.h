#pragma once

#include <QString>

class DropDownList;

/// The lists of the encoder pages of the options, and the rule between the Vorbis bit rates.

/// Each empties the list and fills it; the number of an entry is its bit rate in kb/s, that of "Default" 0.
void FillMP3BitRates(DropDownList &list);
void FillWMABitRates(DropDownList &list);
void FillOGGBitRates(DropDownList &list);
/// The same with the numbers of the channel modes; the first one is chosen then.
void FillChannelModes(DropDownList &list);

/// WMA sample rates go as an index.
inline constexpr qint32 LastWMASampleRate = 6;
/// "44100Hz", or "N/A" for an index that there isn't.
QString WMASampleRateName(qint32 index);

enum class VorbisFault { None, NominalAboveMaximum, NominalBelowMinimum, MinimumAboveMaximum };
/// The first fault between three bit rates in kb/s, of which a minimum or maximum of 0 sets no limit.
VorbisFault findVorbisFault(qint32 nominal, qint32 minimum, qint32 maximum);
