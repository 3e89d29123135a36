#pragma once

#include "converter/FormatChoice.h"
#include "ui_frmOutFmt.h"

/// The third step: the output format.
class frmOutFmt : public FormatChoice, private Ui::frmOutFmt
{
public:
    frmOutFmt();
};
