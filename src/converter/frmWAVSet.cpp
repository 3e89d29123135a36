#include "converter/frmWAVSet.h"

#include "base/Text.h"
#include "converter/FormatTables.h"

using FormatTables::valueOf;

frmWAVSet::frmWAVSet(Form &form) : FormatPage(form)
{
    setupUi(this);
    fill(*cboWAVFrequency, FormatTables::WavFrequencies);
    fill(*cboWAVChannels, FormatTables::Channels);
    fill(*cboWAVBits, FormatTables::WavBits);
}

bool frmWAVSet::apply(NCTAudioFile &writer)
{
    writer.SetWAVFormat(valueOf(*cboWAVFrequency, 44100), valueOf(*cboWAVChannels, 2),
                        valueOf(*cboWAVBits, 16));
    return !trimBlanks(writer.FormatString()).isEmpty() ||
           refuse(QStringLiteral("The WAV settings is not valid, please reset it to continue!"));
}
