#include "converter/frmMP3Set.h"

#include "converter/FormatTables.h"

using FormatTables::valueOf;

frmMP3Set::frmMP3Set(Form &form) : FormatPage(form)
{
    setupUi(this);
    fill(*cboMP3Frequency, FormatTables::Frequencies);
    fill(*cboMP3Channels, FormatTables::Mp3Channels);
    fill(*cboMP3Bitrate, FormatTables::BitRates);
    fill(*cboMP3VBRMaxBitRate, FormatTables::BitRates);
    attachClick(chMP3VBR, [this] { chMP3VBR_Click(); });
    attach(hsMP3CBRQuality, &QSlider::valueChanged, [this] { hsMP3CBRQuality_Change(); });
    attach(hsMP3VBRQuality, &QSlider::valueChanged, [this] { hsMP3VBRQuality_Change(); });
}

bool frmMP3Set::apply(NCTAudioFile &writer)
{
    if (!m_objMP3Options)
        m_objMP3Options = &writer.MP3Options();
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
    return true;
}

void frmMP3Set::chMP3VBR_Click()
{
    for (QWidget *control :
         {static_cast<QWidget *>(cboMP3VBRMaxBitRate), static_cast<QWidget *>(chWriteVBRHeader),
          static_cast<QWidget *>(chStrictlyEnforceMinBitrate), static_cast<QWidget *>(hsMP3VBRQuality)})
        control->setEnabled(chMP3VBR->isTicked());
}

void frmMP3Set::hsMP3CBRQuality_Change()
{
    lblMP3CBRQuality->setText(QString::number(hsMP3CBRQuality->value()));
}

void frmMP3Set::hsMP3VBRQuality_Change()
{
    lblMP3VBRVal->setText(QString::number(hsMP3VBRQuality->value()));
}
