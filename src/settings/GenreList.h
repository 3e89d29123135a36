#pragma once

class DropDownList;
class NCTAudioInformation;

/// Fills a list with the genre names, so that a row is the genre's index, and chooses the first.
void fillGenres(DropDownList &list, const NCTAudioInformation &AInfo);
