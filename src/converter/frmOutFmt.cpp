#include "converter/frmOutFmt.h"

#include "converter/WmaNote.h"

frmOutFmt::frmOutFmt()
{
    setupUi(this);
    m_buttons = {rdDesMP3, rdDesWAV, rdDesWMA, rdDesOGG};
    lblOutNote->setText(wmaNote());
}
