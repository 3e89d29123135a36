#pragma once

#include "settings/OptionsPage.h"
#include "ui_OptionsAppearance.h"

/// The look of the track lists. The preview list is the only model: colours, font and grid lines are held in
/// it and saved from it.
class OptionsAppearance : public OptionsPage, private Ui::OptionsAppearance
{
public:
    OptionsAppearance(Form &form, const SettingsStore &store);

    void load() override;
    void save() const override;
    void reset() override;

private:
    void fillPreview();
    void chkGridLine_Click();
    void cmdBackColor_Click();
    void cmdForeColor_Click();
    void cmdFont_Click();
};
