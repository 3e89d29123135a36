#include "controls/CommandBar.h"

#include "base/RunTimeFailure.h"

#include <QToolButton>

CommandBar::CommandBar(QWidget *parent) : QToolBar(parent)
{
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setMovable(false);
}

void CommandBar::setBarStyle(qint32 style)
{
    if (style != Standard && style != Flat)
        throw RunTimeFailure(RunTimeFailure::InvalidCall);
    m_style = style;
    showStyle();
}

void CommandBar::actionEvent(QActionEvent *event)
{
    QToolBar::actionEvent(event);
    showStyle();
}

void CommandBar::showStyle()
{
    for (auto *button : findChildren<QToolButton *>()) {
        button->setAutoRaise(m_style == Flat);
        button->setFocusPolicy(Qt::TabFocus);
    }
}
