#include "converter/FormatTables.h"
#include "converter/frmMain1.h"
#include "platform/ProgramPaths.h"

using FormatTables::valueOf;

void frmMain1::SetValues()
{
    using namespace FormatTables;
    fill(*cboMP3Frequency, Frequencies);
    fill(*cboMP3Channels, Mp3Channels);
    fill(*cboMP3Bitrate, BitRates);
    fill(*cboWAVFrequency, WavFrequencies);
    fill(*cboWAVChannels, Channels);
    fill(*cboWAVBits, WavBits);
    fill(*cboMP3VBRMaxBitRate, BitRates);
    fill(*cboOGGFrequency, Frequencies);
    fill(*cboOGGChannels, Channels);
    fill(*cboOGGBitrates, BitRates);
    fill(*cboOGGVBRMinBitrate, BitRates);
    fill(*cboOGGVBRMaxBitrate, BitRates);
    txtFolder->setText(desktop().paths.ProgramFolder + PathSeparator + QStringLiteral("output"));
}

// --- MP3

void frmMain1::ApplyMP3Format()
{
    if (!m_objMP3Options)
        m_objMP3Options = &FileW->MP3Options();
    NCTMP3Options &options = *m_objMP3Options;
    options.setSampleRate(valueOf(*cboMP3Frequency, 44100));
    options.setConstantBitRate(!chMP3VBR->isTicked());
    options.setCBRQuality(hsMP3CBRQuality->value());
    options.setCBRBitRate(valueOf(*cboMP3Bitrate, 128));
    options.setVBRMaxBitRate(valueOf(*cboMP3VBRMaxBitRate, 192));
    const qint32 mode = valueOf(*cboMP3Channels, 1);
    options.setChannelCount(mode == 0 ? 1 : 2);
    if (mode != 0)
        options.setChannelMode(mode);
    options.setWriteVBRHeader(chWriteVBRHeader->isTicked());
    options.setStrictMinBitRate(chStrictlyEnforceMinBitrate->isTicked());
    options.setVBRQuality(hsMP3VBRQuality->value());
}

void frmMain1::chMP3VBR_Click()
{
    for (QWidget *control :
         {static_cast<QWidget *>(cboMP3VBRMaxBitRate), static_cast<QWidget *>(chWriteVBRHeader),
          static_cast<QWidget *>(chStrictlyEnforceMinBitrate), static_cast<QWidget *>(hsMP3VBRQuality)})
        control->setEnabled(chMP3VBR->isTicked());
}

void frmMain1::hsMP3CBRQuality_Change()
{
    lblMP3CBRQuality->setText(QString::number(hsMP3CBRQuality->value()));
}

void frmMain1::hsMP3VBRQuality_Change()
{
    lblMP3VBRVal->setText(QString::number(hsMP3VBRQuality->value()));
}

// --- WAV

void frmMain1::ApplyWAVFormat()
{
    FileW->SetWAVFormat(valueOf(*cboWAVFrequency, 44100), valueOf(*cboWAVChannels, 2),
                        valueOf(*cboWAVBits, 16));
}

// --- OGG

/// What the page says; rates in hertz and kb/s.
struct frmMain1::OggValues
{
    qint32 rate, channels, bitRate, minimum, maximum;
};

frmMain1::OggValues frmMain1::oggValues() const
{
    return {valueOf(*cboOGGFrequency, 44100), valueOf(*cboOGGChannels, 2), valueOf(*cboOGGBitrates, 128),
            valueOf(*cboOGGVBRMinBitrate, 128), valueOf(*cboOGGVBRMaxBitrate, 128)};
}

bool frmMain1::IsOGGFormatValid() const
{
    const OggValues page = oggValues();
    if (chkOGGEncoder->isTicked())
        return true;
    if (chkOGGVBREnabled->isTicked())
        return FileW->CheckOGGFormat(page.rate, page.channels, page.bitRate, page.minimum, page.maximum);
    return FileW->CheckOGGFormat(page.rate, page.channels, page.bitRate, 0, 0);
}

void frmMain1::ApplyOGGFormat()
{
    const OggValues page = oggValues();
    if (chkOGGEncoder->isTicked()) {
        const auto quality = static_cast<qint16>(hsOGGVBRQuality->value() * 100);
        FileW->SetOGGFormat(page.rate, page.channels, 128, 0, 0, quality);
    } else if (!IsOGGFormatValid()) {
        refuse(QStringLiteral("Incorrect Ogg Vorbis format, please reset it."), BoxIcon::Critical);
    } else if (chkOGGVBREnabled->isTicked()) {
        FileW->SetOGGFormat(page.rate, page.channels, page.bitRate, page.minimum, page.maximum);
    } else {
        FileW->SetOGGFormat(page.rate, page.channels, page.bitRate);
    }
}

void frmMain1::chkOGGEncoder_Click()
{
    const bool quality = chkOGGEncoder->isTicked();
    hsOGGVBRQuality->setEnabled(quality);
    chkOGGVBREnabled->setEnabled(!quality);
    cboOGGBitrates->setEnabled(!quality);
    const bool limits = chkOGGVBREnabled->isTicked() && !quality;
    cboOGGVBRMinBitrate->setEnabled(limits);
    cboOGGVBRMaxBitrate->setEnabled(limits);
}

void frmMain1::chkOGGVBREnabled_Click()
{
    cboOGGVBRMinBitrate->setEnabled(chkOGGVBREnabled->isTicked());
    cboOGGVBRMaxBitrate->setEnabled(chkOGGVBREnabled->isTicked());
}

void frmMain1::hsOGGVBRQuality_Change()
{
    lblOGGVBRQuality->setText(QString::number(hsOGGVBRQuality->value()));
}
