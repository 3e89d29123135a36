// Formats, names and folders of what will be ripped.
#include "base/Text.h"
#include "naming/FileNames.h"
#include "naming/Paths.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "settings/Folders.h"
#include "shell/frmMain.h"

namespace {

/// 15 twips make a pixel at 96 to the inch.
constexpr int pixels(int twips)
{
    return twips / 15;
}

} // namespace

std::size_t frmMain::selectedFormat() const
{
    for (std::size_t index = 0; index < rdFormat.size(); ++index) {
        if (rdFormat[index]->isSelected())
            return index;
    }
    return 0;
}

QObject *frmMain::innerEncoder(const Format &format) const
{
    switch (format.encType) {
    case EncMP3:
        return m_parts.MP3EncoderX1->innerObject();
    case EncWMA:
        return m_parts.WMAEncoderX1->innerObject();
    case EncOGG:
        return m_parts.VorbisEncoderX1->innerObject();
    case EncWAV:
    case EncVQF:
        break;
    }
    return nullptr;
}

void frmMain::SelectEncoder(std::size_t Index)
{
    const Format &format = Formats::all()[Index];
    CDRipperX &engine = *m_parts.CDRipperX1;
    m_objEncoder = innerEncoder(format);
    if (format.usesEncoder)
        engine.SetEncoder(m_objEncoder);
    engine.setUseEncoder(format.usesEncoder);
    m_sExtension = format.rippedExtension;
}

void frmMain::rdFormat_Click(std::size_t Index)
{
    SelectEncoder(Index);
    m_tracks.RefreshTrackExtensions(m_sExtension);
    txtOutputDirectory->setText(m_sFolder[Index]);
}

void frmMain::UpdateFileNamesWithTitles()
{
    m_tracks.UpdateFileNamesWithTitles(m_discInfo.TrackTitles, m_sExtension);
}

/// The other box's own click runs by that; the result is the same.
void frmMain::checkBoxes_Click(const TickBox &clicked, TickBox &other)
{
    other.setTicked(clicked.isTicked());
    m_tracks.checkAll(clicked.isTicked());
}

void frmMain::lvwTracks_DblClick()
{
    if (m_tracks.count() > 0)
        renameTrack();
}

void frmMain::renameTrack()
{
    const int row = lvwTracks->selectedRow();
    if (row == 0) {
        desktop().dialogs.messageBox(
            this,
            {.text = QStringLiteral("Please highlight the item that you want to edit the track's name!")});
        return;
    }
    m_iEditIndex = static_cast<qint16>(row);
    const QString oldName = m_tracks.fileName(row);
    const QPoint place(lvwTracks->columnLeft(SaveAsColumn) + pixels(600),
                       lvwTracks->mapTo(this, QPoint()).y() + pixels(1200));
    const QString answer = desktop().dialogs.inputBox(
        this,
        {.prompt = QStringLiteral("Old tracks name is: \n%1\n\nPlease enter new tracks name: ").arg(oldName),
         .title = QStringLiteral("Rename tracks"),
         .text = oldName,
         .position = frameGeometry().topLeft() + place});
    const QString name = MakeSafeFileName(answer);
    if (!trimBlanks(name).isEmpty())
        m_tracks.setFileName(m_iEditIndex, name);
}

QString frmMain::outputDirectory() const
{
    return txtOutputDirectory->text();
}

void frmMain::cmdFolder_Click()
{
    const QString folder = BrowseForFolder(desktop().dialogs, this);
    if (!folder.isEmpty())
        txtOutputDirectory->setText(withClosingSeparator(folder));
    CreateDirectoryPath(desktop().dialogs, this, txtOutputDirectory->text());
}

void frmMain::cmdIE_Click()
{
    CreateDirectoryPath(desktop().dialogs, this, txtOutputDirectory->text());
    desktop().shell.explore(txtOutputDirectory->text());
}
