#include "platform/Form.h"

#include <QEventLoop>
#include <QScreen>
#include <QStyle>
#include <QWindow>

Form::~Form() = default;

void Form::showModal(QWidget *owner)
{
    const std::shared_ptr<Form> keep = weak_from_this().lock();
    load();
    if (m_unloaded)
        return;
    QWidget *window = widget();
    window->setWindowModality(Qt::ApplicationModal);
    if (owner) {
        window->winId(); // makes the native window that can be owned
        owner->window()->winId();
        window->windowHandle()->setTransientParent(owner->window()->windowHandle());
    }
    window->show();
    if (!m_unloaded) {
        QEventLoop loop;
        m_modalLoop = &loop;
        loop.exec();
    }
    m_desktop.end.unwindIfEnding();
}

void Form::showModeless()
{
    const std::shared_ptr<Form> keep = weak_from_this().lock();
    load();
    if (m_unloaded)
        return;
    widget()->show();
    widget()->raise();
    widget()->activateWindow();
}

void Form::load()
{
    if (!std::exchange(m_loaded, true))
        Form_Load();
}

void Form::centerOnScreen()
{
    QWidget *window = widget();
    const QRect screen = window->screen()->availableGeometry();
    const QSize size = window->size().expandedTo(window->sizeHint()).boundedTo(screen.size());
    window->setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, screen));
}

void Form::unload()
{
    if (m_unloaded)
        return;
    const std::shared_ptr<Form> keep = weak_from_this().lock();
    m_unloaded = true;
    Form_Unload();
    widget()->close();
    if (m_modalLoop)
        m_modalLoop->quit();
    if (m_release)
        std::exchange(m_release, {})();
}
