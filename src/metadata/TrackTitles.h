#pragma once

#include <QString>

class Dialogs;
class QWidget;
class ReportListView;
class TrackListHost;

/// The titles in the list of an editor window: a row for each track, its number in the first column and its
/// title in the second.

/// The name trimmed and without one extension of a sound file that the program writes.
QString StripAudioExtension(const QString &name);

/// Gives the columns their widths, the number's as narrow as it may be and the title's the rest, and the list
/// the width that titles need.
void layOutTitleColumns(ReportListView &list);

/// Adds a row for each track of the main list, with its title of the joined titles; where those have none,
/// with its file name less the extension.
void addTitleRows(ReportListView &list, const TrackListHost &host, const QString &joinedTitles);

/// Lets the user type the title of the selected row; an empty answer leaves it. Without a selected row
/// nothing happens.
void askForTitle(ReportListView &list, Dialogs &dialogs, QWidget *owner);

/// The titles of all rows as they stand, joined.
QString joinedTitles(const ReportListView &list);
