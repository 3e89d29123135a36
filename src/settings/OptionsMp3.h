#pragma once

#include "settings/OptionsPage.h"
#include "ui_OptionsMp3.h"

class MP3EncoderX;

class OptionsMp3 : public OptionsPage, private Ui::OptionsMp3
{
public:
    OptionsMp3(Form &form, const SettingsStore &store);

    /// `encoder` outlives the page.
    void fill(MP3EncoderX &encoder);
    /// Whether the rates can be stored; says so if not. They count whether their lists are enabled or not.
    bool isValid() const;
    /// Puts the values into the encoder. False where it has refused them, which has been said then.
    bool apply();

    void load() override;
    void save() const override;
    void reset() override;

private:
    void UpdateMP3Controls();

    MP3EncoderX *m_objMP3 = nullptr;
};
