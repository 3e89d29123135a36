#include "platform/qt/KeptCustomColors.h"

#include <QColorDialog>

KeptCustomColors::KeptCustomColors()
{
    for (int i = 0; i < QColorDialog::customCount(); ++i)
        m_colors += QColorDialog::customColor(i);
}

KeptCustomColors::~KeptCustomColors()
{
    for (int i = 0; i < m_colors.size(); ++i)
        QColorDialog::setCustomColor(i, m_colors[i]);
}
