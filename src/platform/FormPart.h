#pragma once

#include "platform/Form.h"

/// A part of a window that is a Designer form and a class of its own. Its handlers are the window's: they
/// stop at the same border, and none starts once the window is unloaded. It lives as long as its window.
class FormPart
{
protected:
    explicit FormPart(Form &form) : m_form(form) {}
    ~FormPart() = default;

    const Desktop &desktop() const { return m_form.desktop(); }

    template <typename Sender, typename Signal, typename Handler>
    QMetaObject::Connection attach(Sender *sender, Signal signal, Handler handler)
    {
        return m_form.attach(sender, signal, handler);
    }

    template <typename Control, typename Handler>
    void attachClick(Control *control, Handler handler)
    {
        m_form.attachClick(control, handler);
    }

private:
    Form &m_form;
};
