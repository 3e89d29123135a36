#include "converter/StepFrame.h"

#include <QPainter>

void StepFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QFont headline = font();
    headline.setPointSizeF(headline.pointSizeF() * 1.4);
    headline.setBold(true);
    painter.setFont(headline);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect line(0, 0, width(), QFontMetrics(headline).height());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, title());
}
