#pragma once

#include <QString>

/// What a ripping job needs of the main window: the plan in the track list, and the folder command.
class RipHost
{
public:
    virtual ~RipHost() = default;

    virtual int trackRowCount() const = 0;
    virtual bool isTrackChecked(int row) const = 0;
    /// The output file name without its folder.
    virtual QString trackFileName(int row) const = 0;
    /// The text of `txtOutputDirectory` as it stands.
    virtual QString outputDirectory() const = 0;
    /// Opens the output folder in the file browser.
    virtual void cmdIE_Click() = 0;
};
