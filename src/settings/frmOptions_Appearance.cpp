// The page "Appearance". Its preview list is its only model: colours, font and grid lines are held in it and
// saved from it.
#include "base/Numbers.h"
#include "platform/Dialogs.h"
#include "settings/ListLook.h"
#include "settings/Pickers.h"
#include "settings/frmOptions.h"

#include <QHeaderView>

void frmOptions::fillPreview()
{
    const QString time = QStringLiteral("00:00:00");
    for (int i = 1; i <= 8; ++i) {
        const QString number = twoDigits(i);
        lvwTracks->addRow(
            {QString(), number, QStringLiteral("Track%1.mp3").arg(number), time, time, time, QString()});
    }
    lvwTracks->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

void frmOptions::loadAppearancePage()
{
    LoadGridLines(m_store, *lvwTracks);
    chkGridLine->setTicked(lvwTracks->gridLines());
    LoadListColorsAndFont(m_store, *lvwTracks);
}

void frmOptions::resetAppearancePage()
{
    lvwTracks->setGridLines(true);
    chkGridLine->setTicked(true);
    lvwTracks->setBackColor(0xffffff);
    lvwTracks->setForeColor(0);
    QFont font = lvwTracks->font();
    font.setBold(false);
    font.setItalic(false);
    font.setFamily(QStringLiteral("MS Sans Serif"));
    font.setPointSizeF(8.25);
    font.setStrikeOut(false);
    font.setUnderline(false);
    lvwTracks->setFont(font);
}

void frmOptions::chkGridLine_Click()
{
    lvwTracks->setGridLines(chkGridLine->isTicked());
}

void frmOptions::cmdBackColor_Click()
{
    const qint32 color = ChooseColorDialog(desktop().dialogs, this, lvwTracks->backColor());
    if (color != Dialogs::ColorCancelled)
        lvwTracks->setBackColor(color);
}

void frmOptions::cmdForeColor_Click()
{
    const qint32 color = ChooseColorDialog(desktop().dialogs, this, lvwTracks->foreColor());
    if (color != Dialogs::ColorCancelled)
        lvwTracks->setForeColor(color);
}

void frmOptions::cmdFont_Click()
{
    ChooseFontDialog(desktop().dialogs, this, *lvwTracks);
}
