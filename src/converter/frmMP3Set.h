#pragma once

#include "converter/FormatPage.h"
#include "ui_frmMP3Set.h"

/// The settings of MP3 files.
class frmMP3Set : public FormatPage, private Ui::frmMP3Set
{
public:
    explicit frmMP3Set(Form &form);

    bool apply(NCTAudioFile &writer) override;

private:
    void chMP3VBR_Click();
    void hsMP3CBRQuality_Change();
    void hsMP3VBRQuality_Change();

    NCTMP3Options *m_objMP3Options = nullptr; ///< the writer's
};
