#pragma once

#include <QString>

/// What the editors of the disc record need of the main window: its track list.
class TrackListHost
{
public:
    virtual ~TrackListHost() = default;

    virtual int trackRowCount() const = 0;
    /// The output file name of a row, which counts from 1, without its folder.
    virtual QString trackFileName(int row) const = 0;
    /// Names the rows after the disc record; to be called after every change of it.
    virtual void UpdateFileNamesWithTitles() = 0;
};
