#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "base/Task.h"
#include "base/Text.h"
#include "controls/InputGate.h"
#include "controls/WaitCursor.h"
#include "platform/Dialogs.h"
#include "tags/TagColumns.h"
#include "tags/frmID3E.h"

#include <QScopedValueRollback>
#include <QStyle>
#include <algorithm>

void frmID3E::ListView1_DblClick()
{
    const int row = ListView1->selectedRow();
    if (hasNoRows() || row == 0)
        return;
    const QString title = trimBlanks(desktop().dialogs.inputBox(
        this, {.prompt = QStringLiteral("Please enter the title for track %1 :").arg(row),
               .title = QStringLiteral("Enter CD Tracks Title"),
               .text = ListView1->text(row, TagColumns::Title),
               .position = {}}));
    if (!title.isEmpty())
        ListView1->setText(row, TagColumns::Title, title);
}

void frmID3E::cmdEdit_Click()
{
    if (hasNoRows())
        inform(QStringLiteral("No Files in the list for edit."));
    ListView1_DblClick();
}

void frmID3E::cmdSave_Click()
{
    if (m_gate)
        return;
    if (hasNoRows()) {
        inform(QStringLiteral("There are no files opened in the list"));
        return;
    }
    if (trimBlanks(txtAlbum->text()).isEmpty()) {
        inform(QStringLiteral("Please enter the text string for album."));
        return;
    }
    if (trimBlanks(txtArtist->text()).isEmpty()) {
        inform(QStringLiteral("Please enter the text string for artist."));
        return;
    }
    bool wasCancelled = false;
    m_saved = 0;
    {
        const WaitCursor waiting(*this);
        InputGate gate(*this, *cmdClose);
        const QScopedValueRollback saving(m_gate, &gate);
        m_saving.start();
        for (int row = 1; row <= ListView1->rowCount() && !gate.isCancelled(); ++row)
            SaveFileTags(static_cast<qint16>(row));
        wasCancelled = gate.isCancelled();
        prgSave->hide();
    }
    if (wasCancelled)
        inform(
            QStringLiteral("Cancelled: %1 of %2 files are saved.").arg(m_saved).arg(ListView1->rowCount()));
    else
        inform(QStringLiteral("Saved Successfully!"));
}

/// With errors passed over: a file that can't be written stays as it is, its row says why, and a year that is
/// no number leaves the one written or read last.
void frmID3E::SaveFileTags(qint16 no)
{
    const SkipFailures skip;
    QString path;
    skip([&] { path = GetFileByNo(no); });
    skip([&] { m_AInfo->setTagTitle(titleOf(no)); });
    skip([&] {
        m_AInfo->setTagAlbum(meantText(trimBlanks(txtAlbum->text()), m_whole.album, TagRecord::AlbumSize));
    });
    skip([&] {
        m_AInfo->setTagArtist(
            meantText(trimBlanks(txtArtist->text()), m_whole.artist, TagRecord::ArtistSize));
    });
    skip([&] { m_AInfo->setTagTrack(no); });
    skip([&] { m_AInfo->setTagGenre(static_cast<qint16>(cboGenre->listIndex())); });
    skip([&] { m_AInfo->setTagYear(toInt32(txtYear->text())); });
    skip([&] {
        m_AInfo->setTagComment(
            meantText(trimBlanks(txtComment->text()), m_whole.comment, TagRecord::CommentSize));
    });
    skip([&] { writeBeside(withoutNul(path), no); });
}

QString frmID3E::titleOf(int row) const
{
    const QString whole = ListView1->topLevelItem(row - 1)->data(TagColumns::Title, WholeText).toString();
    return meantText(trimBlanks(ListView1->text(row, TagColumns::Title)), whole, TagRecord::TitleSize);
}

void frmID3E::writeBeside(const QString &path, qint16 no)
{
    TagWriting writing;
    const auto isCancelled = [&] {
        showProgress(no, writing);
        return m_gate->isCancelled();
    };
    try {
        doBeside("tags",
                 [&](const std::stop_token &stop) {
                     writing.stop = stop;
                     m_AInfo->WriteTags(path, &writing);
                 },
                 {.isCancelled = isCancelled, .takesInput = true});
        ++m_saved;
        markRow(no, {});
    } catch (const TaskCancelled &) { // it stays as it is
    } catch (const RunTimeFailure &failure) {
        markRow(no, failure.description());
    }
}

void frmID3E::showProgress(qint16 no, const TagWriting &writing)
{
    constexpr qint64 QuickMilliseconds = 1000; ///< what is done by then needs no word
    if (m_saving.elapsed() < QuickMilliseconds)
        return;
    const double ofFile =
        writing.expected > 0 ? std::min(1.0, double(writing.written) / double(writing.expected)) : 0;
    prgSave->setValue(static_cast<int>((no - 1 + ofFile) / ListView1->rowCount() * prgSave->maximum()));
    prgSave->show();
}

void frmID3E::markRow(int row, const QString &reason)
{
    QTreeWidgetItem *item = ListView1->topLevelItem(row - 1);
    item->setIcon(TagColumns::File,
                  reason.isEmpty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning));
    const QString told = reason.isEmpty() ? QString() : QStringLiteral("Not saved: ") + reason;
    item->setToolTip(TagColumns::File, told);
    item->setData(TagColumns::File, Qt::AccessibleDescriptionRole, told);
}
