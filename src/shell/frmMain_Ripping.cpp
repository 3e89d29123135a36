#include "platform/Dialogs.h"
#include "settings/Folders.h"
#include "shell/frmMain.h"

void frmMain::StartRipping()
{
    const QString repeated = m_tracks.FindRepeatedNames();
    if (!repeated.isEmpty()) {
        desktop().dialogs.messageBox(
            this, {.text = QStringLiteral("The following file name(s) are repeated in the list, \n"
                                          "please change them before continue!\n") +
                           repeated,
                   .icon = BoxIcon::Critical});
        return;
    }
    if (!m_tracks.AnyTrackChecked()) {
        desktop().dialogs.messageBox(
            this, {.text = QStringLiteral("Please check some tracks from the list to extract!")});
        return;
    }
    Timer1.stop();
    const std::size_t index = selectedFormat();
    SelectEncoder(index); // a click may never have done so
    CreateDirectoryPath(desktop().dialogs, this, txtOutputDirectory->text());
    m_windows.showExtract(Formats::all()[index].encType);
    Timer1.start();
}
