#pragma once

#include "converter/ConvertStatus.h"
#include "converter/StepFrame.h"
#include "ui_frmConvert.h"

/// The last step: how the job goes.
class frmConvert : public StepFrame, private Ui::frmConvert
{
public:
    frmConvert();

    void showStatus(const ConvertStatus &status);
    /// In percent.
    void showProgress(double ofFile, double ofJob);
};
