#include "base/Formats.h"
#include "base/SkipFailures.h"
#include "base/Text.h"
#include "controls/WaitCursor.h"
#include "naming/Paths.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "tags/TagColumns.h"
#include "tags/frmID3E.h"

/// A filter for each format, and one for all of them.
void frmID3E::OpenFiles()
{
    const QString filter = QStringLiteral("%1 Files(%2)");
    QStringList names, patterns, filters;
    for (const Format &format : Formats::withTags()) {
        names.append(format.name);
        patterns.append(u'*' + format.extension);
        filters.append(filter.arg(format.caption, patterns.last()));
    }
    const QString allNames = names.join(QStringLiteral(" and "));
    filters.append(filter.arg(allNames, patterns.join(u' ')));
    AddFiles(desktop().dialogs.openFiles(
        this,
        {.title = QStringLiteral("Open Audio Files ") + allNames, .filters = filters, .directory = {}}));
}

/// With errors passed over.
void frmID3E::AddFiles(const QStringList &files)
{
    if (files.isEmpty())
        return;
    const WaitCursor waiting(*this);
    desktop().pump.processEvents();
    const SkipFailures skip;
    for (const QString &file : files) {
        if (isUnloaded())
            return;
        skip([&] { AddOneFileToList(file); });
    }
    desktop().pump.processEvents();
}

void frmID3E::AddOneFileToList(const QString &strFile)
{
    const auto refuse = [&](const QString &what) {
        desktop().dialogs.messageBox(this, {.text = what + u'\n' + strFile, .icon = BoxIcon::Critical});
    };
    if (IsFileInList(strFile))
        return;
    if (!m_AInfo->IsAudioFile(strFile)) {
        refuse(QStringLiteral("The following file is not an audio file:"));
        return;
    }
    const TagRecord tags = ReadFileTags(strFile);
    if (!tags.IsMP3 && !tags.IsOGG) {
        refuse(QStringLiteral("The following file is not an MP3 or OGG Vorbis file:"));
        return;
    }
    const int row = ListView1->addRow({QString::number(ListView1->rowCount() + 1)});
    ListView1->setText(row, TagColumns::File, ExtractFile(strFile));
    ListView1->setText(row, TagColumns::Title, fixedText(tags.title, TagRecord::TitleSize));
    ListView1->topLevelItem(row - 1)->setData(TagColumns::Title, WholeText, tags.title);
    ListView1->setText(row, TagColumns::Path, ExtractPath(strFile));
    if (ListView1->selectedRow() == 0)
        ListView1->selectRow(row); // a list with rows has a selected one
    txtYear->setText(tags.year);
    m_whole = tags;
    txtAlbum->setText(fixedText(tags.album, TagRecord::AlbumSize));
    txtArtist->setText(fixedText(tags.artist, TagRecord::ArtistSize));
    cboGenre->setListIndex(tags.genre);
    txtComment->setText(fixedText(tags.comment, TagRecord::CommentSize));
}

/// With errors passed over.
TagRecord frmID3E::ReadFileTags(const QString &strFile) const
{
    const SkipFailures skip;
    TagRecord tags;
    skip([&] { tags.IsMP3 = m_AInfo->IsMP3File(strFile); });
    skip([&] { tags.IsOGG = m_AInfo->IsOGGFile(strFile); });
    skip([&] { m_AInfo->ReadTags(strFile); });
    skip([&] { tags.title = m_AInfo->TagTitle(); });
    skip([&] { tags.artist = m_AInfo->TagArtist(); });
    skip([&] { tags.album = m_AInfo->TagAlbum(); });
    skip([&] { tags.genre = m_AInfo->TagGenre(); });
    skip([&] { tags.comment = m_AInfo->TagComment(); });
    skip([&] { tags.year = fixedText(QString::number(m_AInfo->TagYear()), TagRecord::YearSize); });
    return tags;
}

bool frmID3E::IsFileInList(const QString &strFile) const
{
    for (int row = 1; row <= ListView1->rowCount(); ++row) {
        if (GetFileByNo(static_cast<qint16>(row)) == strFile)
            return true;
    }
    return false;
}

QString frmID3E::GetFileByNo(qint16 no) const
{
    if (no > ListView1->rowCount())
        return {};
    return JoinPathFile(ListView1->text(no, TagColumns::Path), ListView1->text(no, TagColumns::File));
}

void frmID3E::RemoveCheckedFiles()
{
    if (hasNoRows()) {
        inform(QStringLiteral("There are no files in the list."));
        return;
    }
    bool removed = false;
    for (int row = ListView1->rowCount(); row >= 1; --row) {
        if (ListView1->isChecked(row)) {
            ListView1->removeRow(row);
            removed = true;
        }
    }
    if (!removed)
        inform(QStringLiteral("Please check some files from the list for removing."));
    RenumberRows();
}

void frmID3E::RenumberRows()
{
    for (int row = 1; row <= ListView1->rowCount(); ++row)
        ListView1->setText(row, TagColumns::Track, QString::number(row));
    if (!hasNoRows() && ListView1->selectedRow() == 0)
        ListView1->selectRow(1);
    update();
}

void frmID3E::Command1_Click()
{
    for (int row = 1; row <= ListView1->rowCount(); ++row)
        ListView1->setChecked(row, CheckAllNext);
    CheckAllNext = !CheckAllNext;
}

void frmID3E::MoveFileUp()
{
    if (hasNoRows())
        inform(QStringLiteral("There are no files in the list!\nPlease add some files first!"));
    else if (ListView1->selectedRow() < 2)
        inform(QStringLiteral("The current selected row is already at the top,\nCan not move up any more!"));
    else
        moveSelectedRow(-1);
}

void frmID3E::MoveFileDown()
{
    if (hasNoRows())
        inform(QStringLiteral("There are no files in the list!\nPlease add some files first!"));
    else if (ListView1->selectedRow() >= ListView1->rowCount())
        inform(QStringLiteral(
            "The current selected row is already at the bottom,\nCan not move down any more!"));
    else
        moveSelectedRow(1);
}

/// With errors passed over.
void frmID3E::moveSelectedRow(int step)
{
    const SkipFailures skip;
    const int row = ListView1->selectedRow();
    skip([&] { SwapRows(row, row + step); });
    skip([&] { ListView1->selectRow(row + step); });
    skip([&] { ListView1->setFocus(); });
}

void frmID3E::SwapRows(int a, int b)
{
    markRow(a, {});
    markRow(b, {});
    for (int column = TagColumns::Title; column < ListView1->columnCount(); ++column) {
        const QString text = ListView1->text(a, column);
        ListView1->setText(a, column, ListView1->text(b, column));
        ListView1->setText(b, column, text);
    }
    QTreeWidgetItem *items[] = {ListView1->topLevelItem(a - 1), ListView1->topLevelItem(b - 1)};
    const QVariant whole = items[0]->data(TagColumns::Title, WholeText);
    items[0]->setData(TagColumns::Title, WholeText, items[1]->data(TagColumns::Title, WholeText));
    items[1]->setData(TagColumns::Title, WholeText, whole);
}
