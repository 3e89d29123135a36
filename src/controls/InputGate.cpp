#include "controls/InputGate.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>

InputGate::InputGate(QWidget &window, const QAbstractButton &answering)
    : m_window(window), m_modal(QApplication::activeModalWidget()), m_answering(answering)
{
    qApp->installEventFilter(this);
}

InputGate::~InputGate() = default;

/// Windows of the system, which pass their events on to controls, are none of the gate's business.
bool InputGate::eventFilter(QObject *target, QEvent *event)
{
    if (!target->isWidgetType() && event->type() != QEvent::Shortcut)
        return false;
    if (const QWidget *modal = QApplication::activeModalWidget(); modal && modal != m_modal)
        return false;
    switch (event->type()) {
    case QEvent::Close:
        m_cancelled = m_cancelled || target == &m_window;
        event->ignore();
        return true;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
            m_cancelled = true;
            return true;
        }
        [[fallthrough]];
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return target != &m_answering;
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}
