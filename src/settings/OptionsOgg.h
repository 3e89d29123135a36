#pragma once

#include "settings/OptionsPage.h"
#include "ui_OptionsOgg.h"

class VorbisEncoderX;

class OptionsOgg : public OptionsPage, private Ui::OptionsOgg
{
public:
    OptionsOgg(Form &form, const SettingsStore &store);

    /// `encoder` outlives the page.
    void fill(VorbisEncoderX &encoder);
    /// Whether the rates can be stored; says so if not. They count whether their lists are enabled or not;
    /// limits may be equal.
    bool isValid() const;
    /// Puts the values into the encoder. False where they don't fit each other, which has been said then.
    bool apply();

    void load() override;
    void save() const override;
    void reset() override;

private:
    void chkUseAdvanced_Click();
    /// The same rule has one wording for the start of OK and Save and another for the encoder.
    struct OggWords
    {
        QString nominalAboveMaximum;
        QString nominalBelowMinimum;
        QString minimumAboveMaximum;
    };
    bool validateBitRates(const OggWords &words) const;

    VorbisEncoderX *m_objVorbis = nullptr;
};
