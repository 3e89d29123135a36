#include "converter/frmSrcFmt.h"

#include "base/Formats.h"
#include "converter/WmaNote.h"

frmSrcFmt::frmSrcFmt(Form &form, frmOutFmt &output) : FormPart(form)
{
    setupUi(this);
    m_buttons = {rdSrcMP3, rdSrcWAV, rdSrcWMA, rdSrcOGG};
    lblSrcNote->setText(wmaNote());
    attachClick(rdSrcMP3, [&output] { output.choose(ConvertWAV); });
    attachClick(rdSrcWAV, [&output] { output.choose(ConvertMP3); });
}
