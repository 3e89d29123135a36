#pragma once

#include "converter/FormatPage.h"
#include "ui_frmOggSet.h"

/// The settings of OGG Vorbis files: a quality, a bit rate, or a bit rate with limits.
class frmOggSet : public FormatPage, private Ui::frmOggSet
{
public:
    explicit frmOggSet(Form &form);

    bool apply(NCTAudioFile &writer) override;

private:
    struct OggValues;
    OggValues oggValues() const;
    bool IsOGGFormatValid(const NCTAudioFile &writer) const;
    void ApplyOGGFormat(NCTAudioFile &writer) const;
    void chkOGGEncoder_Click();
    void chkOGGVBREnabled_Click();
    void hsOGGVBRQuality_Change();
};
