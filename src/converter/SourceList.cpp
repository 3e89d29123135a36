#include "converter/SourceList.h"

#include "controls/DroppedPaths.h"

#include <QDropEvent>
#include <QPainter>
#include <QTimer>

SourceList::SourceList(QWidget *parent) : QListWidget(parent)
{
    setAcceptDrops(true);
    setSelectionMode(ExtendedSelection);
    setUniformItemSizes(true);
}

/// An empty list says what may be dropped on it.
void SourceList::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Drop files and folders here"));
}

void SourceList::dragEnterEvent(QDragEnterEvent *event)
{
    acceptPaths(event);
}

void SourceList::dragMoveEvent(QDragMoveEvent *event)
{
    acceptPaths(event);
}

void SourceList::dropEvent(QDropEvent *event)
{
    acceptPaths(event);
    if (!event->isAccepted())
        return;
    const QStringList paths = localPaths(event->mimeData());
    QTimer::singleShot(0, this, [this, paths] { Q_EMIT pathsDropped(paths); });
}
