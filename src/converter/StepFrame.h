#pragma once

#include <QGroupBox>

/// A page of the wizard. Its caption is drawn as a headline; the skin leaves the room for it.
class StepFrame : public QGroupBox
{
    Q_OBJECT

public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent *event) override;
};
