#include "converter/ProgressBox.h"

#include "converter/Progress.h"

#include <QLabel>

void ProgressBox::setShare(double percent)
{
    m_percent = percent;
    place();
}

QSize ProgressBox::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 7 / 4};
}

void ProgressBox::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    place();
}

void ProgressBox::place()
{
    const QList<QLabel *> labels = findChildren<QLabel *>(Qt::FindDirectChildrenOnly);
    Q_ASSERT(labels.size() == 2);
    labels[0]->setGeometry(0, 0, Progress::barWidth(width(), m_percent), height());
    labels[1]->setGeometry(rect());
}
