#pragma once

#include "converter/frmOutFmt.h"
#include "platform/FormPart.h"
#include "ui_frmSrcFmt.h"

/// The first step: the format of the sources.
class frmSrcFmt : public FormatChoice, private Ui::frmSrcFmt, private FormPart
{
public:
    /// Choosing MP3 or WAV proposes the other one as output; `output` lives as long as this.
    frmSrcFmt(Form &form, frmOutFmt &output);
};
