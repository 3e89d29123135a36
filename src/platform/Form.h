#pragma once

#include "platform/Border.h"
#include "platform/Desktop.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QDialog>
#include <QPointer>
#include <functional>
#include <memory>

class QEventLoop;

/// A window of the program: one instance at a time, held by a FormSlot, loaded on first use and afresh after
/// it was unloaded.
///
/// Unloading from inside a running handler, or from a nested event loop, is normal: the window goes out of
/// sight at once and none of its handlers starts any more, but the object lives until those that run have
/// returned. UI thread only.
class Form : public std::enable_shared_from_this<Form>
{
public:
    virtual ~Form();

    /// Shows the window and returns when it has been unloaded. Where the program is ending it unwinds
    /// instead.
    void showModal(QWidget *owner);
    /// Shows the window beside the others, or brings it to the front.
    void showModeless();

    /// Closes the window for good, asking nothing.
    void unload();
    bool isUnloaded() const { return m_unloaded; }

    /// Called by the slot: what to do when the form is unloaded.
    void setOnUnloaded(std::function<void()> release) { m_release = std::move(release); }

protected:
    explicit Form(const Desktop &desktop) : m_desktop(desktop) {}

    virtual QWidget *widget() = 0;
    /// What the form does once, just before it is first shown. Pending events may run in it, and the form may
    /// be unloaded in it.
    virtual void Form_Load() {}
    /// What the form does when it is unloaded, by whatever way.
    virtual void Form_Unload() {}

    const Desktop &desktop() const { return m_desktop; }

    /// Puts the window's middle on the screen's.
    void centerOnScreen();

    /// The one way to attach a handler to a signal: failures stop at the border, the form outlives the run. A
    /// handler takes all of the signal's arguments or none.
    template <typename Sender, typename Signal, typename Handler>
    QMetaObject::Connection attach(Sender *sender, Signal signal, Handler handler)
    {
        return QObject::connect(sender, signal, widget(),
                                [this, handler]<typename... Arguments>(Arguments &&...arguments) {
                                    if constexpr (std::is_invocable_v<const Handler &, Arguments...>)
                                        guarded([&] { handler(std::forward<Arguments>(arguments)...); });
                                    else
                                        guarded(handler);
                                });
    }

    /// The same for a control that has the click rule (see controls/ClickSource.h).
    template <typename Control, typename Handler>
    void attachClick(Control *control, Handler handler)
    {
        control->setClickHandler(handler);
        QObject::connect(control, &Control::userClicked, widget(), [this, handler] { guarded(handler); });
    }

    /// Runs what a Qt frame calls. Nothing runs once the form is unloaded.
    template <typename Handler>
    void guarded(Handler &&handler)
    {
        const std::shared_ptr<Form> keep = weak_from_this().lock();
        if (!m_unloaded)
            m_desktop.border.run(std::forward<Handler>(handler));
    }

private:
    friend class FormPart; // shares the handlers' rules with the window's parts

    void load();

    const Desktop m_desktop;
    std::function<void()> m_release;
    QPointer<QEventLoop> m_modalLoop;
    bool m_loaded = false;
    bool m_unloaded = false;
};

/// A form on a Qt window class: its close box unloads it, Escape presses its cancel button and does nothing
/// where there is none.
template <typename QtWindow>
class FormOf : public QtWindow, public Form
{
protected:
    explicit FormOf(const Desktop &desktop) : Form(desktop) {}

    QWidget *widget() final { return this; }
    void setCancelButton(QAbstractButton *button) { m_cancelButton = button; }

    void closeEvent(QCloseEvent *event) override
    {
        event->accept();
        guarded([this] { unload(); });
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
            if (m_cancelButton && m_cancelButton->isEnabled())
                m_cancelButton->click();
            event->accept();
        } else {
            QtWindow::keyPressEvent(event);
        }
    }

private:
    QPointer<QAbstractButton> m_cancelButton;
};

/// Holds the one instance of a window.
template <typename Window>
class FormSlot
{
public:
    using Maker = std::function<std::shared_ptr<Window>()>;

    explicit FormSlot(Maker make) : m_make(std::move(make)) {}
    ~FormSlot()
    {
        if (m_form)
            m_form->setOnUnloaded({});
    }
    FormSlot(const FormSlot &) = delete;
    FormSlot &operator=(const FormSlot &) = delete;

    /// The window, loaded if it isn't. Hold the pointer while calling anything that runs events.
    std::shared_ptr<Window> form()
    {
        if (!m_form) {
            m_form = m_make();
            m_form->setOnUnloaded([this] { m_form.reset(); });
        }
        return m_form;
    }

    bool isLoaded() const { return m_form != nullptr; }

private:
    Maker m_make;
    std::shared_ptr<Window> m_form;
};

/// Makes a form; it is deleted by the event loop, so that the frames of Qt that called it are gone by then.
template <typename Window, typename... Arguments>
std::shared_ptr<Window> makeForm(Arguments &&...arguments)
{
    return std::shared_ptr<Window>(new Window(std::forward<Arguments>(arguments)...),
                                   [](Window *window) { window->deleteLater(); });
}
