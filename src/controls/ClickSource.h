#pragma once

#include <functional>

/// The click rule: a control's click handler runs for a choice from code just as for the user's.
///
/// From code the handler is called directly, so that its failure reaches the caller; for the user's action
/// the control emits `userClicked`, whose receiver stops failures at the border. `Form::attachClick` sets
/// both.
class ClickSource
{
public:
    void setClickHandler(std::function<void()> handler) { m_handler = std::move(handler); }

protected:
    ClickSource() = default;
    ~ClickSource() = default;

    void clickFromCode() const
    {
        if (m_handler)
            m_handler();
    }

private:
    std::function<void()> m_handler;
};
