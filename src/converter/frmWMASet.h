#pragma once

#include "converter/FormatPage.h"
#include "ui_frmWMASet.h"

/// The settings of WMA files: one of the profiles.
class frmWMASet : public FormatPage, private Ui::frmWMASet
{
    Q_OBJECT

public:
    explicit frmWMASet(Form &form);

    /// Fills the list of profiles with what the component calls them.
    void LoadWMAProfiles(NCTAudioFile &file);
    bool apply(NCTAudioFile &writer) override;

Q_SIGNALS:
    /// A link got the focus, which none should keep.
    void linkFocused();

private:
    void ShowWMADescription();
};
