#include "converter/LinkText.h"

#include <QMouseEvent>

LinkText::LinkText(QWidget *parent) : QLineEdit(parent)
{
    setReadOnly(true);
    setFrame(false);
    setFocusPolicy(Qt::ClickFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
}

QSize LinkText::sizeHint() const
{
    const int margins = 2 * fontMetrics().averageCharWidth();
    return {fontMetrics().horizontalAdvance(text()) + margins, QLineEdit::sizeHint().height()};
}

void LinkText::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    Q_EMIT gotFocus();
}

void LinkText::mouseReleaseEvent(QMouseEvent *event)
{
    deselect();
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}
