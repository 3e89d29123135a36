// The windows that the main window opens.
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "shell/frmMain.h"

void frmMain::showHelp() {}

void frmMain::showAudioConverter() {}

void frmMain::downloadInformation()
{
    if (m_tracks.count() == 0)
        desktop().dialogs.messageBox(
            this,
            {.text = QStringLiteral("No CD in the selected CD-ROM device, please insert an audio CD.")});
    else
        showCddb();
}

void frmMain::showCddb() {}

void frmMain::editTracks()
{
    if (m_tracks.count() == 0)
        desktop().dialogs.messageBox(this, {.text = QStringLiteral("No tracks in the list to edit!")});
}

void frmMain::editTags() {}

void frmMain::showOptions()
{
    LoadMainSettings();
}

void frmMain::showVistaNotice() {}

void frmMain::showAbout() {}

void frmMain::OfferDiscLookup() {}
