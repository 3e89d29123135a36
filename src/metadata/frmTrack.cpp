#include "metadata/frmTrack.h"

#include "base/DiscInfo.h"
#include "base/Text.h"
#include "components/NCTAudioInformation.h"
#include "controls/DigitsOnly.h"
#include "metadata/TrackListHost.h"
#include "metadata/TrackTitles.h"
#include "platform/Dialogs.h"
#include "settings/GenreList.h"

frmTrack::frmTrack(const Desktop &desktop, const Parts &parts) : FormOf(desktop), m_parts(parts)
{
    setupUi(this);
    setCancelButton(cmdCancel);
    new DigitsOnly(txtYear);
    layOutTitleColumns(*ListView1);
    attach(OKButton, &QPushButton::clicked, [this] { OKButton_Click(); });
    attach(cmdCancel, &QPushButton::clicked, [this] { cmdCancel_Click(); });
    attach(ListView1, &ReportListView::listClicked, [this] { ListView1_Click(); });
    attach(ListView1, &ReportListView::returnPressed, [this] { ListView1_Click(); });
}

void frmTrack::Form_Load()
{
    fillGenres(*cboGenre, m_parts.AInfo);
    addTitleRows(*ListView1, m_parts.host, m_parts.discInfo.TrackTitles);
    txtAlbum->setText(m_parts.discInfo.Album);
    txtArtist->setText(m_parts.discInfo.Artist);
    txtYear->setText(m_parts.discInfo.Year);
    txtComment->setText(m_parts.discInfo.Comment);
    cboGenre->setListIndex(m_parts.discInfo.GenreIndex);
}

bool frmTrack::refuseEmptyText()
{
    const std::pair<QLineEdit *, QString> rules[] = {
        {txtAlbum, QStringLiteral("Please enter Album text")},
        {txtArtist, QStringLiteral("Please enter Artist text")},
        {txtYear, QStringLiteral("Please enter Year text")},
    };
    for (const auto &[box, refusal] : rules) {
        if (trimBlanks(box->text()).isEmpty()) {
            desktop().dialogs.messageBox(this, {.text = refusal});
            return true;
        }
    }
    return false;
}

void frmTrack::OKButton_Click()
{
    if (refuseEmptyText())
        return;
    DiscInfo &disc = m_parts.discInfo;
    disc.SaveToFiles = !chkID3->isTicked();
    disc.Album = trimBlanks(txtAlbum->text());
    disc.Year = trimBlanks(txtYear->text());
    disc.Artist = trimBlanks(txtArtist->text());
    disc.Comment = trimBlanks(txtComment->text());
    disc.GenreIndex = static_cast<qint16>(cboGenre->listIndex());
    disc.TrackTitles = joinedTitles(*ListView1);
    m_parts.host.UpdateFileNamesWithTitles();
    unload();
}

void frmTrack::cmdCancel_Click()
{
    unload();
}

void frmTrack::ListView1_Click()
{
    askForTitle(*ListView1, desktop().dialogs, this);
}
