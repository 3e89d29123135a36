#include "controls/OptionButton.h"

OptionButton::OptionButton(QWidget *parent) : QRadioButton(parent)
{
    connect(this, &QRadioButton::toggled, this, [this](bool on) {
        if (on && !m_fromCode)
            Q_EMIT userClicked();
    });
}

void OptionButton::select()
{
    if (isChecked())
        return;
    m_fromCode = true;
    setChecked(true);
    m_fromCode = false;
    clickFromCode();
}
