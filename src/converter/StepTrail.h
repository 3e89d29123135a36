#pragma once

#include <QWidget>

/// The wizard's way as a row of six numbered dots: those behind the current step are filled, the current one
/// stands out.
class StepTrail : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Steps = 6;

    explicit StepTrail(QWidget *parent = nullptr);

    void setStep(int step); ///< from 1

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_step = 1;
};
