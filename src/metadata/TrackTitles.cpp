#include "metadata/TrackTitles.h"

#include "base/Formats.h"
#include "base/Text.h"
#include "controls/ReportListView.h"
#include "metadata/TrackListHost.h"
#include "platform/Dialogs.h"

#include <QHeaderView>

namespace {

constexpr int TitleColumn = 1;
constexpr int FewestCharacters = 40; ///< of a row that are in sight, about

} // namespace

QString StripAudioExtension(const QString &name)
{
    const QString trimmed = trimBlanks(name);
    const Format *const format = Formats::ofFile(trimmed);
    return format ? trimmed.chopped(format->extension.size()) : trimmed;
}

void layOutTitleColumns(ReportListView &list)
{
    list.header()->setStretchLastSection(true);
    list.header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    list.setMinimumWidth(list.fontMetrics().averageCharWidth() * FewestCharacters);
}

void addTitleRows(ReportListView &list, const TrackListHost &host, const QString &joinedTitles)
{
    const QStringList titles = splitText(joinedTitles, ListSeparator);
    for (int row = 1; row <= host.trackRowCount(); ++row) {
        const QString title = titles.value(row - 1);
        list.addRow({QString::number(row),
                     trimBlanks(title).isEmpty() ? StripAudioExtension(host.trackFileName(row)) : title});
    }
}

void askForTitle(ReportListView &list, Dialogs &dialogs, QWidget *owner)
{
    const int row = list.selectedRow();
    if (row == 0)
        return;
    const QString answer = trimBlanks(
        dialogs.inputBox(owner, {.prompt = QStringLiteral("Please enter the title of tracks %1:").arg(row),
                                 .title = QStringLiteral("enter title of tracks %1").arg(row),
                                 .text = list.text(row, TitleColumn),
                                 .position = {}}));
    if (!answer.isEmpty())
        list.setText(row, TitleColumn, answer);
}

QString joinedTitles(const ReportListView &list)
{
    QStringList titles;
    for (int row = 1; row <= list.rowCount(); ++row)
        titles += list.text(row, TitleColumn);
    return titles.join(ListSeparator);
}
