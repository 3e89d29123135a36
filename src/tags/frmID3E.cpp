#include "tags/frmID3E.h"

#include "base/Formats.h"
#include "controls/DigitsOnly.h"
#include "controls/DroppedPaths.h"
#include "controls/InputGate.h"
#include "platform/Dialogs.h"
#include "settings/GenreList.h"
#include "tags/TagColumns.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QTimer>

frmID3E::frmID3E(const Desktop &desktop, std::unique_ptr<NCTAudioInformation> AInfo)
    : FormOf(desktop), m_AInfo(std::move(AInfo))
{
    setupUi(this);
    setAcceptDrops(true);
    new DigitsOnly(txtYear);
    ListView1->header()->setSectionResizeMode(TagColumns::Track, QHeaderView::ResizeToContents);
    const int character = fontMetrics().averageCharWidth();
    ListView1->header()->resizeSection(TagColumns::Title, 30 * character);
    ListView1->header()->resizeSection(TagColumns::File, 24 * character);
    attach(cmdOpen, &QPushButton::clicked, [this] { cmdOpen_Click(); });
    attach(cmdRemove, &QPushButton::clicked, [this] { cmdRemove_Click(); });
    attach(cmdEdit, &QPushButton::clicked, [this] { cmdEdit_Click(); });
    attach(cmdUp, &QPushButton::clicked, [this] { cmdUp_Click(); });
    attach(cmdDown, &QPushButton::clicked, [this] { cmdDown_Click(); });
    attach(cmdSave, &QPushButton::clicked, [this] { cmdSave_Click(); });
    attach(cmdClose, &QPushButton::clicked, [this] { cmdClose_Click(); });
    attach(Command1, &QPushButton::clicked, [this] { Command1_Click(); });
    attach(ListView1, &ReportListView::listDoubleClicked, [this] { ListView1_DblClick(); });
}

void frmID3E::Form_Load()
{
    fillGenres(*cboGenre, *m_AInfo);
    CheckAllNext = true;
}

void frmID3E::dragEnterEvent(QDragEnterEvent *event)
{
    acceptPaths(event);
}

/// Files are added once the drop is over, so that a box doesn't hold up the other program.
void frmID3E::dropEvent(QDropEvent *event)
{
    acceptPaths(event);
    if (!event->isAccepted())
        return;
    QStringList endings;
    for (const Format &format : Formats::withTags())
        endings.append(format.extension);
    QStringList files;
    for (const QString &path : localPaths(event->mimeData())) {
        if (QFileInfo(path).isDir())
            files += filesBelow(path, endings);
        else
            files.append(path);
    }
    QTimer::singleShot(0, this, [this, files] { guarded([&] { AddFiles(files); }); });
}

void frmID3E::cmdOpen_Click()
{
    OpenFiles();
}

void frmID3E::cmdRemove_Click()
{
    RemoveCheckedFiles();
}

void frmID3E::cmdUp_Click()
{
    MoveFileUp();
}

void frmID3E::cmdDown_Click()
{
    MoveFileDown();
}

void frmID3E::cmdClose_Click()
{
    if (m_gate)
        m_gate->cancel();
    else
        unload();
}

void frmID3E::closeEvent(QCloseEvent *event)
{
    if (m_gate)
        event->ignore();
    else
        FormOf::closeEvent(event);
}

void frmID3E::inform(const QString &text)
{
    desktop().dialogs.messageBox(this, {.text = text});
}
