#include "settings/OptionsAppearance.h"

#include "base/Numbers.h"
#include "platform/Dialogs.h"
#include "settings/ListLook.h"
#include "settings/Pickers.h"

#include <QHeaderView>

OptionsAppearance::OptionsAppearance(Form &form, const SettingsStore &store) : OptionsPage(form, store)
{
    setupUi(this);
    fillPreview();
    attachClick(chkGridLine, [this] { chkGridLine_Click(); });
    attach(cmdBackColor, &QPushButton::clicked, [this] { cmdBackColor_Click(); });
    attach(cmdForeColor, &QPushButton::clicked, [this] { cmdForeColor_Click(); });
    attach(cmdFont, &QPushButton::clicked, [this] { cmdFont_Click(); });
}

void OptionsAppearance::fillPreview()
{
    const QString time = QStringLiteral("00:00:00");
    for (int i = 1; i <= 8; ++i) {
        const QString number = twoDigits(i);
        lvwTracks->addRow(
            {QString(), number, QStringLiteral("Track%1.mp3").arg(number), time, time, time, QString()});
    }
    lvwTracks->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

void OptionsAppearance::load()
{
    LoadGridLines(settings(), *lvwTracks);
    chkGridLine->setTicked(lvwTracks->gridLines());
    LoadListColorsAndFont(settings(), *lvwTracks);
}

void OptionsAppearance::save() const
{
    SaveListLook(settings(), *lvwTracks);
}

void OptionsAppearance::reset()
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

void OptionsAppearance::chkGridLine_Click()
{
    lvwTracks->setGridLines(chkGridLine->isTicked());
}

void OptionsAppearance::cmdBackColor_Click()
{
    const qint32 color = ChooseColorDialog(desktop().dialogs, window(), lvwTracks->backColor());
    if (color != Dialogs::ColorCancelled)
        lvwTracks->setBackColor(color);
}

void OptionsAppearance::cmdForeColor_Click()
{
    const qint32 color = ChooseColorDialog(desktop().dialogs, window(), lvwTracks->foreColor());
    if (color != Dialogs::ColorCancelled)
        lvwTracks->setForeColor(color);
}

void OptionsAppearance::cmdFont_Click()
{
    ChooseFontDialog(desktop().dialogs, window(), *lvwTracks);
}
