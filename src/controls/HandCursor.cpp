#include "controls/HandCursor.h"

#include <QWidget>

void SetHandCursor(QWidget *control)
{
    control->setCursor(Qt::PointingHandCursor);
}
