#pragma once

#include "converter/StepFrame.h"
#include "platform/FormPart.h"
#include "ui_frmOtherSet.h"

/// The fifth step: the output folder, what becomes of files that exist, and what follows the job.
class frmOtherSet : public StepFrame, private Ui::frmOtherSet, private FormPart
{
public:
    explicit frmOtherSet(Form &form);

    QString folder() const { return txtFolder->text(); }
    bool asksBeforeOverwriting() const { return rdPrompt->isSelected(); }
    /// Without asking.
    bool overwrites() const { return rdOverwrite->isSelected(); }
    bool exploresFolder() const { return chkExplorer->isTicked(); }
    bool closesWindow() const { return chkExit->isTicked(); }
    bool endsProgram() const { return chkShut->isTicked(); }

private:
    void cmdFolder_Click();
};
