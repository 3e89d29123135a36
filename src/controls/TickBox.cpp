#include "controls/TickBox.h"

TickBox::TickBox(QWidget *parent) : QCheckBox(parent)
{
    connect(this, &QCheckBox::toggled, this, [this] {
        if (!m_fromCode)
            Q_EMIT userClicked();
    });
}

void TickBox::setTicked(bool ticked)
{
    if (ticked == isChecked())
        return;
    m_fromCode = true;
    setChecked(ticked);
    m_fromCode = false;
    clickFromCode();
}
