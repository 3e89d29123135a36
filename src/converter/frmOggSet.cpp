#include "converter/frmOggSet.h"

#include "converter/FormatTables.h"

using FormatTables::valueOf;

frmOggSet::frmOggSet(Form &form) : FormatPage(form)
{
    setupUi(this);
    fill(*cboOGGFrequency, FormatTables::Frequencies);
    fill(*cboOGGChannels, FormatTables::Channels);
    fill(*cboOGGBitrates, FormatTables::BitRates);
    fill(*cboOGGVBRMinBitrate, FormatTables::BitRates);
    fill(*cboOGGVBRMaxBitrate, FormatTables::BitRates);
    attachClick(chkOGGEncoder, [this] { chkOGGEncoder_Click(); });
    attachClick(chkOGGVBREnabled, [this] { chkOGGVBREnabled_Click(); });
    attach(hsOGGVBRQuality, &QSlider::valueChanged, [this] { hsOGGVBRQuality_Change(); });
}

/// What the page says; rates in hertz and kb/s.
struct frmOggSet::OggValues
{
    qint32 rate, channels, bitRate, minimum, maximum;
};

frmOggSet::OggValues frmOggSet::oggValues() const
{
    return {valueOf(*cboOGGFrequency, 44100), valueOf(*cboOGGChannels, 2), valueOf(*cboOGGBitrates, 128),
            valueOf(*cboOGGVBRMinBitrate, 128), valueOf(*cboOGGVBRMaxBitrate, 128)};
}

bool frmOggSet::IsOGGFormatValid(const NCTAudioFile &writer) const
{
    const OggValues page = oggValues();
    if (chkOGGEncoder->isTicked())
        return true;
    if (chkOGGVBREnabled->isTicked())
        return writer.CheckOGGFormat(page.rate, page.channels, page.bitRate, page.minimum, page.maximum);
    return writer.CheckOGGFormat(page.rate, page.channels, page.bitRate, 0, 0);
}

bool frmOggSet::apply(NCTAudioFile &writer)
{
    if (!IsOGGFormatValid(writer))
        return refuse(QStringLiteral("The OGG Vorbis settings is not valid, please reset it to continue!"));
    ApplyOGGFormat(writer);
    return true;
}

void frmOggSet::ApplyOGGFormat(NCTAudioFile &writer) const
{
    const OggValues page = oggValues();
    if (chkOGGEncoder->isTicked()) {
        const auto quality = static_cast<qint16>(hsOGGVBRQuality->value() * 100);
        writer.SetOGGFormat(page.rate, page.channels, 128, 0, 0, quality);
    } else if (!IsOGGFormatValid(writer)) {
        refuse(QStringLiteral("Incorrect Ogg Vorbis format, please reset it."));
    } else if (chkOGGVBREnabled->isTicked()) {
        writer.SetOGGFormat(page.rate, page.channels, page.bitRate, page.minimum, page.maximum);
    } else {
        writer.SetOGGFormat(page.rate, page.channels, page.bitRate);
    }
}

void frmOggSet::chkOGGEncoder_Click()
{
    const bool quality = chkOGGEncoder->isTicked();
    hsOGGVBRQuality->setEnabled(quality);
    chkOGGVBREnabled->setEnabled(!quality);
    cboOGGBitrates->setEnabled(!quality);
    const bool limits = chkOGGVBREnabled->isTicked() && !quality;
    cboOGGVBRMinBitrate->setEnabled(limits);
    cboOGGVBRMaxBitrate->setEnabled(limits);
}

void frmOggSet::chkOGGVBREnabled_Click()
{
    cboOGGVBRMinBitrate->setEnabled(chkOGGVBREnabled->isTicked());
    cboOGGVBRMaxBitrate->setEnabled(chkOGGVBREnabled->isTicked());
}

void frmOggSet::hsOGGVBRQuality_Change()
{
    lblOGGVBRQuality->setText(QString::number(hsOGGVBRQuality->value()));
}
