#include "converter/StepFrame.h"

#include "converter/Skin.h"

#include <QPainter>

void StepFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QFont headline = Skin::headline(font());
    painter.setFont(headline);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect line(0, 0, width(), QFontMetrics(headline).height());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, title());
}
