#pragma once

#include "components/NCTAudioFile.h"
#include "converter/StepFrame.h"
#include "platform/Dialogs.h"
#include "platform/FormPart.h"

/// A page of the fourth step: the settings of one output format.
class FormatPage : public StepFrame, protected FormPart
{
public:
    /// Puts what is chosen into the writer. False, after a box that says so, where it can't be: the user
    /// stays on the page.
    virtual bool apply(NCTAudioFile &writer) = 0;

protected:
    explicit FormatPage(Form &form) : FormPart(form) {}

    /// Always false.
    bool refuse(const QString &text) const
    {
        desktop().dialogs.messageBox(window(), {.text = text, .icon = BoxIcon::Critical});
        return false;
    }
};
