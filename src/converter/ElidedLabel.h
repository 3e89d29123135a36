#pragma once

#include <QLabel>

/// A label of one line that never widens its window: a text too long for it is cut in its middle when it is
/// drawn, and then stands whole in the tip.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
};
