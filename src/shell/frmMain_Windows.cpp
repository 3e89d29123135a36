// The commands that open windows.
#include "platform/Dialogs.h"
#include "shell/frmMain.h"

void frmMain::downloadInformation()
{
    if (m_tracks.count() == 0)
        desktop().dialogs.messageBox(
            this,
            {.text = QStringLiteral("No CD in the selected CD-ROM device, please insert an audio CD.")});
    else
        m_windows.showCddb();
}

void frmMain::editTracks()
{
    if (m_tracks.count() == 0)
        desktop().dialogs.messageBox(this, {.text = QStringLiteral("No tracks in the list to edit!")});
    else
        m_windows.showTrackEditor();
}

void frmMain::showOptions()
{
    m_windows.showOptions();
    LoadMainSettings();
}
