#include "converter/frmSource.h"

#include "base/Formats.h"
#include "controls/HandCursor.h"
#include "converter/SourceFiles.h"
#include "platform/Dialogs.h"

namespace {

constexpr int MaxRows = 32767; // the job counts its files in 16 bits

} // namespace

frmSource::frmSource(Form &form) : FormPart(form)
{
    setupUi(this);
    for (QPushButton *button : {cmdAdd, cmdRemove, cmdClearAll})
        SetHandCursor(button);
    attach(cmdAdd, &QPushButton::clicked, [this] { cmdAdd_Click(); });
    attach(cmdRemove, &QPushButton::clicked, [this] { cmdRemove_Click(); });
    attach(cmdClearAll, &QPushButton::clicked, [this] { cmdClearAll_Click(); });
    attach(lstFile, &SourceList::pathsDropped,
           [this](const QStringList &paths) { lstFile_PathsDropped(paths); });
}

void frmSource::cmdAdd_Click()
{
    const Format &format = Formats::ofConverter(m_nSourceFormat);
    OpenFiles request;
    request.filters = QStringList{QStringLiteral("%1 Files(*%2)").arg(format.name, format.extension)};
    addSources(SourceFiles::selected(desktop().dialogs.openFiles(window(), request)));
}

void frmSource::lstFile_PathsDropped(const QStringList &paths)
{
    // The drop came while the step was shown; by now it may have been left.
    if (!isHidden())
        addSources(SourceFiles::dropped(paths, m_nSourceFormat));
}

/// Adds each path as a new last row, but for those that are there already: each of them is told.
void frmSource::addSources(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (IsFileInList(path))
            desktop().dialogs.messageBox(
                window(), {.text = QStringLiteral("The following file is in the list already,\n") + path});
        else if (lstFile->count() < MaxRows) {
            lstFile->addItem(path);
            m_paths.insert(path);
        }
    }
    Q_EMIT changed();
}

bool frmSource::IsFileInList(const QString &path) const
{
    return m_paths.contains(path);
}

void frmSource::cmdRemove_Click()
{
    for (int row = lstFile->count() - 1; row >= 0; --row) {
        if (lstFile->item(row)->isSelected()) {
            m_paths.remove(lstFile->item(row)->text());
            delete lstFile->takeItem(row);
        }
    }
    Q_EMIT changed();
}

void frmSource::cmdClearAll_Click()
{
    lstFile->clear();
    m_paths.clear();
    Q_EMIT changed();
}
