#pragma once

#include <QFrame>

class QLabel;

/// A box in which a coloured label grows from the left edge, a text lying over the whole of it. The two
/// labels are the box's children, in this order.
class ProgressBox : public QFrame
{
    Q_OBJECT

public:
    using QFrame::QFrame;

    /// The share that the coloured label takes of the box's width, 0.0 to 100.0.
    void setShare(double percent);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void place();

    double m_percent = 0;
};
