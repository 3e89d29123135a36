#pragma once

#include "controls/ClickSource.h"

#include <QCheckBox>

/// A tick box: a change of its value, by whomever, runs the click rule.
class TickBox : public QCheckBox, public ClickSource
{
    Q_OBJECT

public:
    explicit TickBox(QWidget *parent = nullptr);

    bool isTicked() const { return isChecked(); }
    void setTicked(bool ticked);

Q_SIGNALS:
    void userClicked();

private:
    bool m_fromCode = false;
};
