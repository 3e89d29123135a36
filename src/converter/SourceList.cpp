#include "converter/SourceList.h"

#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QTimer>
#include <QUrl>

namespace {

QStringList localPaths(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            paths.append(QDir::toNativeSeparators(url.toLocalFile()));
    }
    return paths;
}

/// Copying is all that is offered: a file manager must not take a "moved" file away.
void acceptPaths(QDropEvent *event)
{
    if (localPaths(event->mimeData()).isEmpty() || !(event->possibleActions() & Qt::CopyAction)) {
        event->ignore();
    } else {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

} // namespace

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
