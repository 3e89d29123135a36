#pragma once

#include "settings/OptionsPage.h"
#include "ui_OptionsOther.h"

class OptionsOther : public OptionsPage, private Ui::OptionsOther
{
public:
    OptionsOther(Form &form, const SettingsStore &store);

    void load() override;
    void save() const override;
    void reset() override;
};
