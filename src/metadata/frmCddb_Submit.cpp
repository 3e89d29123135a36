// The submission.
#include "base/DiscInfo.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "components/CDDB.h"
#include "controls/WaitCursor.h"
#include "metadata/EmailAddress.h"
#include "metadata/TrackListHost.h"
#include "metadata/TrackTitles.h"
#include "metadata/frmCddb.h"
#include "platform/EventPump.h"

#include <QScopedValueRollback>

void frmCddb::cmdSubmitCDDB_Click()
{
    if (m_bExchanging)
        return;
    if (followDisc()) {
        showInformation(QStringLiteral("The disc was changed, please enter what is on the new one."));
        return;
    }
    if (const QString refusal = findRefusal(); !refusal.isEmpty()) {
        showInformation(refusal);
        return;
    }
    const QScopedValueRollback exchanging(m_bExchanging, true);
    const QString titles = joinedTitles(*ListView1);
    writeConnection([](const auto &statement) { statement(); });
    CDDB1->setAlbum(trimBlanks(txtAlbum->text()));
    CDDB1->setCategory(cboCate->currentText());
    CDDB1->setDiscLength(m_parts.discInfo.DiscSeconds);
    CDDB1->setTrackOffsets(m_parts.discInfo.TrackOffsets);
    CDDB1->setYear(trimBlanks(txtYear->text()));
    CDDB1->setTitles(titles);
    CDDB1->setArtist(trimBlanks(txtArtist->text()));
    CDDB1->setTrackCount(toInt16(m_parts.host.trackRowCount()));
    CDDB1->setGenre(cboGenre->currentText());
    CDDB1->setComments(trimBlanks(txtComm->text()));
    CDDB1->setEmail(trimBlanks(txtEmail->text()));
    {
        const WaitCursor waiting(*this);
        desktop().pump.processEvents();
    }
    const std::optional<qint16> status = runExchange(
        [this, id = txtID->text()](const std::stop_token &stop) { return CDDB1->SubmitDisc(id, stop); });
    if (!status)
        return;
    if (status == CDDB::Accepted)
        takeSubmission();
    else if (status == CDDB::Refused)
        showError(QStringLiteral("Submission Rejected"));
    else
        showFailure(*status);
}

QString frmCddb::findRefusal()
{
    if (trimBlanks(txtAlbum->text()).isEmpty())
        return QStringLiteral("Please enter Album text");
    if (trimBlanks(txtArtist->text()).isEmpty())
        return QStringLiteral("Please enter Artist text");
    if (trimBlanks(txtYear->text()).isEmpty())
        return QStringLiteral("Please enter Year text");
    txtEmail->setText(trimBlanks(txtEmail->text()));
    if (txtEmail->text().isEmpty())
        return QStringLiteral("Please enter Email address");
    if (!IsValidEmail(txtEmail->text()))
        return QStringLiteral("The email address is not correct, please enter it again.");
    for (int row = 1; row <= ListView1->rowCount(); ++row) {
        const QString title = trimBlanks(ListView1->text(row, 1));
        if (title.isEmpty())
            return QStringLiteral("Please fill in all the titles, and every title can not be empty.");
        if (title.startsWith(QStringLiteral("Track")))
            return QStringLiteral("Please enter correct titles, you can not enter title like \"track\", "
                                  "\"track01\", \"track-1\", etc.");
    }
    return {};
}

void frmCddb::takeSubmission()
{
    if (isSameDisc()) {
        DiscInfo &disc = m_parts.discInfo;
        disc.TrackTitles = CDDB1->Titles();
        disc.Album = CDDB1->Album();
        disc.Artist = CDDB1->Artist();
        disc.Year = CDDB1->Year();
        disc.GenreIndex = static_cast<qint16>(cboGenre->listIndex());
        disc.Comment = CDDB1->Comments();
        m_parts.host.UpdateFileNamesWithTitles();
    }
    showInformation(QStringLiteral("Submitted Successfully!"));
    unload();
}
