#include "converter/FormatChoice.h"

qint16 FormatChoice::chosen(qint16 otherwise) const
{
    for (const OptionButton *button : m_buttons) {
        if (button->isSelected())
            return static_cast<qint16>(m_buttons.indexOf(button) + 1);
    }
    return otherwise;
}

void FormatChoice::choose(qint16 code)
{
    m_buttons[code - 1]->select();
}
