#pragma once

#include "controls/OptionButton.h"
#include "converter/StepFrame.h"

#include <QList>

/// A step that asks for a format by option buttons, which stand in the order of the format codes from 1 on.
class FormatChoice : public StepFrame
{
public:
    /// The code of the chosen format; `otherwise` where none is chosen.
    qint16 chosen(qint16 otherwise) const;
    void choose(qint16 code);

protected:
    QList<OptionButton *> m_buttons;
};
