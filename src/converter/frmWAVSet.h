#pragma once

#include "converter/FormatPage.h"
#include "ui_frmWAVSet.h"

/// The settings of WAV files.
class frmWAVSet : public FormatPage, private Ui::frmWAVSet
{
public:
    explicit frmWAVSet(Form &form);

    bool apply(NCTAudioFile &writer) override;
};
