#include "base/Formats.h"
#include "converter/SourceFiles.h"
#include "converter/frmMain1.h"

namespace {

constexpr int MaxRows = 32767; // the job counts its files in 16 bits

} // namespace

void frmMain1::cmdAdd_Click()
{
    const Format &format = Formats::ofConverter(m_nSourceFormat);
    OpenFiles request;
    request.filters = QStringList{QStringLiteral("%1 Files(*%2)").arg(format.name, format.extension)};
    addSources(SourceFiles::selected(desktop().dialogs.openFiles(this, request)));
}

void frmMain1::lstFile_PathsDropped(const QStringList &paths)
{
    // The drop came while the step was shown; by now it may have been left.
    if (m_nStep == Sources)
        addSources(SourceFiles::dropped(paths, m_nSourceFormat));
}

/// Adds each path as a new last row, but for those that are there already: each of them is told.
void frmMain1::addSources(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (IsFileInList(path))
            desktop().dialogs.messageBox(
                this, {.text = QStringLiteral("The following file is in the list already,\n") + path});
        else if (lstFile->count() < MaxRows) {
            lstFile->addItem(path);
            m_paths.insert(path);
        }
    }
    cmdNext->setEnabled(lstFile->count() > 0);
}

bool frmMain1::IsFileInList(const QString &path) const
{
    return m_paths.contains(path);
}

void frmMain1::cmdRemove_Click()
{
    for (int row = lstFile->count() - 1; row >= 0; --row) {
        if (lstFile->item(row)->isSelected()) {
            m_paths.remove(lstFile->item(row)->text());
            delete lstFile->takeItem(row);
        }
    }
    cmdNext->setEnabled(lstFile->count() > 0);
}

void frmMain1::cmdClearAll_Click()
{
    lstFile->clear();
    m_paths.clear();
    cmdNext->setEnabled(false);
}
