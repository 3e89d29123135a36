#include "converter/StepTrail.h"

#include <QPainter>
#include <QPainterPath>

StepTrail::StepTrail(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setStep(1);
}

void StepTrail::setStep(int step)
{
    m_step = step;
    setAccessibleName(QStringLiteral("Step %1 of %2").arg(step).arg(Steps));
    update();
}

QSize StepTrail::sizeHint() const
{
    const int dot = fontMetrics().height() * 2;
    return {dot * Steps * 2, dot};
}

void StepTrail::paintEvent(QPaintEvent *)
{
    const QPalette colors = palette();
    const QColor reached = colors.color(QPalette::Highlight);
    QColor ahead = colors.color(QPalette::WindowText);
    ahead.setAlphaF(0.3F);
    const double diameter = height() - 2;
    const double stride = (width() - diameter - 2) / double(Steps - 1);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont digits = font();
    digits.setBold(true);
    painter.setFont(digits);
    for (int step = 1; step <= Steps; ++step) {
        const QRectF dot(1 + stride * (step - 1), 1, diameter, diameter);
        const bool behind = step < m_step;
        const bool current = step == m_step;
        if (step < Steps) {
            const double y = dot.center().y();
            painter.setPen(QPen(behind ? reached : ahead, 2));
            painter.drawLine(QPointF(dot.right() + 6, y), QPointF(dot.left() + stride - 6, y));
        }
        painter.setPen(QPen(behind || current ? reached : ahead, 2));
        painter.setBrush(behind || current ? QBrush(reached) : QBrush(Qt::NoBrush));
        painter.drawEllipse(dot.adjusted(1, 1, -1, -1));
        painter.setPen(behind || current ? colors.color(QPalette::HighlightedText)
                                         : colors.color(QPalette::WindowText));
        if (behind) {
            QPainterPath tick(dot.center() + QPointF(-0.20, 0.02) * diameter);
            tick.lineTo(dot.center() + QPointF(-0.05, 0.16) * diameter);
            tick.lineTo(dot.center() + QPointF(0.21, -0.15) * diameter);
            painter.setBrush(Qt::NoBrush);
            painter.setPen(
                QPen(colors.color(QPalette::HighlightedText), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPath(tick);
        } else {
            painter.drawText(dot, Qt::AlignCenter, QString::number(step));
        }
    }
}
