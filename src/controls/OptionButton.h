#pragma once

#include "controls/ClickSource.h"

#include <QRadioButton>

/// An option button: becoming the selected one of its group, by whomever, runs the click rule.
class OptionButton : public QRadioButton, public ClickSource
{
    Q_OBJECT

public:
    explicit OptionButton(QWidget *parent = nullptr);

    bool isSelected() const { return isChecked(); }
    void select();

Q_SIGNALS:
    void userClicked();

private:
    bool m_fromCode = false;
};
