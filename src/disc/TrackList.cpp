#include "disc/TrackList.h"

#include "base/Text.h"
#include "controls/ReportListView.h"
#include "naming/FileNames.h"
#include "naming/Paths.h"

int TrackList::count() const
{
    return m_view.rowCount();
}

bool TrackList::isChecked(int row) const
{
    return m_view.isChecked(row);
}

QString TrackList::fileName(int row) const
{
    return m_view.text(row, SaveAsColumn);
}

void TrackList::setFileName(int row, const QString &name)
{
    m_view.setText(row, SaveAsColumn, name);
}

void TrackList::checkAll(bool checked)
{
    for (int row = 1; row <= count(); ++row)
        m_view.setChecked(row, checked);
}

bool TrackList::AnyTrackChecked() const
{
    for (int row = 1; row <= count(); ++row) {
        if (isChecked(row))
            return true;
    }
    return false;
}

void TrackList::RefreshTrackExtensions(const QString &extension)
{
    for (int row = 1; row <= count(); ++row) {
        QString name = fileName(row);
        QString oldExtension = ExtractExt(name);
        QString newExtension = extension;
        setFileName(row, FileExtChange(name, oldExtension, newExtension));
    }
}

void TrackList::UpdateFileNamesWithTitles(const QString &titles, const QString &extension)
{
    if (trimBlanks(titles).isEmpty())
        return;
    const QStringList parts = splitText(titles, ListSeparator);
    for (int row = 1; row <= count() && row <= parts.size(); ++row) {
        const QString name = MakeTrackFileName(parts[row - 1], extension);
        if (!name.isEmpty())
            setFileName(row, name);
    }
}

QString TrackList::FindRepeatedNames() const
{
    QStringList names;
    for (int row = 1; row <= count(); ++row)
        names.append(fileName(row));
    return repeatedNames(names).join(u'\n');
}
