#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "base/Text.h"
#include "controls/WaitCursor.h"
#include "platform/Dialogs.h"
#include "tags/TagColumns.h"
#include "tags/frmID3E.h"

#include <QStyle>

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
    {
        const WaitCursor waiting(*this);
        for (int row = 1; row <= ListView1->rowCount(); ++row)
            SaveFileTags(static_cast<qint16>(row));
    }
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
    try {
        m_AInfo->WriteTags(withoutNul(path));
        markRow(no, {});
    } catch (const RunTimeFailure &failure) {
        markRow(no, failure.description());
    }
}

QString frmID3E::titleOf(int row) const
{
    const QString whole = ListView1->topLevelItem(row - 1)->data(TagColumns::Title, WholeText).toString();
    return meantText(trimBlanks(ListView1->text(row, TagColumns::Title)), whole, TagRecord::TitleSize);
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
