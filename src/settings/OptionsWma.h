#pragma once

#include "settings/OptionsPage.h"
#include "ui_OptionsWma.h"

class WMAEncoderX;

class OptionsWma : public OptionsPage, private Ui::OptionsWma
{
public:
    OptionsWma(Form &form, const SettingsStore &store);

    /// `encoder` outlives the page.
    void fill(WMAEncoderX &encoder);
    /// Whether there is a sample rate; says so if not. Without one there is nothing to store and nothing to
    /// encode with.
    bool isValid() const;
    /// Puts the values into the encoder.
    void apply();

    void load() override;
    void save() const override;
    void reset() override;

private:
    void cboBitRate_Click();
    qint16 GetWMABitRate() const;
    void UpdateWMAChannels(qint16 bitRate);
    void FillWMASampleRates(qint16 bitRate);

    WMAEncoderX *m_objWMA = nullptr;
};
