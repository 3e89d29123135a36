#pragma once

#include <QString>

class ReportListView;

/// The columns of a track list; 0 is the row's own text with its check box.
enum TrackColumn {
    CheckColumn,
    NumberColumn,
    SaveAsColumn,
    StartColumn,
    EndColumn,
    LengthColumn,
    StatusColumn
};

/// The plan of a rip: the rows of `lvwTracks`, the only place where check marks and output file names are
/// kept. A row's number is its track's.
class TrackList
{
public:
    explicit TrackList(ReportListView &view) : m_view(view) {}

    int count() const;
    bool isChecked(int row) const;
    QString fileName(int row) const;
    void setFileName(int row, const QString &name);

    void checkAll(bool checked);
    bool AnyTrackChecked() const;
    /// Puts an extension on every name, in place of the one that it has.
    void RefreshTrackExtensions(const QString &extension);
    /// Names rows after the titles, joined by "|". Rows beyond the titles, and rows whose title cleans to
    /// nothing, keep their names.
    void UpdateFileNamesWithTitles(const QString &titles, const QString &extension);
    /// The first name of each pair of equal names, a line each, in row order; checked or not, case counts.
    QString FindRepeatedNames() const;

private:
    ReportListView &m_view;
};
