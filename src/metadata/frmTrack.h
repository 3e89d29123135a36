#pragma once

#include "platform/Form.h"
#include "ui_frmTrack.h"

class NCTAudioInformation;
class TrackListHost;
struct DiscInfo;

/// The CD Tracks Editor: the disc record typed by hand, and whether it goes into ripped files. Modal.
class frmTrack : public FormOf<QDialog>, private Ui::frmTrack
{
    Q_OBJECT

public:
    /// What the window works with; all of it outlives the window.
    struct Parts
    {
        TrackListHost &host;
        DiscInfo &discInfo;
        const NCTAudioInformation &AInfo;
    };

    frmTrack(const Desktop &desktop, const Parts &parts);

private:
    void Form_Load() override;
    void OKButton_Click();
    void cmdCancel_Click();
    void ListView1_Click();

    /// Shows what is missing; false where nothing is.
    bool refuseEmptyText();

    Parts m_parts;
};
