#include "settings/OptionsWma.h"

#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "components/WMAEncoderX.h"
#include "settings/OptionLists.h"
#include "settings/SettingsKeys.h"

namespace {

constexpr int WmaRow128 = 14;

} // namespace

OptionsWma::OptionsWma(Form &form, const SettingsStore &store) : OptionsPage(form, store)
{
    setupUi(this);
    attachClick(cboBitRate, [this] { cboBitRate_Click(); });
    attachClick(optStereo, [this] { FillWMASampleRates(GetWMABitRate()); });
    attachClick(optMono, [this] { FillWMASampleRates(GetWMABitRate()); });
}

void OptionsWma::fill(WMAEncoderX &encoder)
{
    m_objWMA = &encoder;
    FillWMABitRates(*cboBitRate);
    cboBitRate->setListIndex(WmaRow128);
}

/// A stored channel option that changes the selection refills the sample rates: the list's first one then
/// stands in place of the stored one.
void OptionsWma::load()
{
    const SkipFailures skip;
    skip([&] { cboBitRate->chooseNumber(stored(Ini::WMA_BitRate)); });
    skip([&] { cboSampleRates->chooseNumber(stored(Ini::WMA_SampleRate)); });
    skip([&] { (toYesNo(settings().read(Ini::WMA_EncodeStereo)) ? optStereo : optMono)->select(); });
    skip([&] { chkEnableDRM->setTicked(toYesNo(settings().read(Ini::WMA_EnableDRM))); });
}

void OptionsWma::save() const
{
    store(Ini::WMA_BitRate, cboBitRate->chosenNumber());
    store(Ini::WMA_SampleRate, cboSampleRates->chosenNumber());
    settings().write(Ini::WMA_EncodeStereo, yesNoText(optStereo->isSelected()));
    settings().write(Ini::WMA_EnableDRM, yesNoText(chkEnableDRM->isTicked()));
}

void OptionsWma::reset()
{
    cboBitRate->setListIndex(WmaRow128);
    if (cboSampleRates->count() > 0)
        cboSampleRates->setListIndex(0);
    optStereo->select();
    chkEnableDRM->setTicked(false);
}

void OptionsWma::cboBitRate_Click()
{
    const qint16 bitRate = GetWMABitRate();
    UpdateWMAChannels(bitRate);
    FillWMASampleRates(bitRate);
}

qint16 OptionsWma::GetWMABitRate() const
{
    try {
        return toInt16(double(cboBitRate->chosenNumber()));
    } catch (const RunTimeFailure &) { // nothing is chosen
        return 0;
    }
}

void OptionsWma::UpdateWMAChannels(qint16 bitRate)
{
    const bool stereo = m_objWMA->IsStereoSupported(bitRate);
    const bool mono = m_objWMA->IsMonoSupported(bitRate);
    if (!stereo && !mono)
        return;
    optStereo->setEnabled(stereo);
    optMono->setEnabled(mono);
    if (!mono)
        optStereo->select();
    if (!stereo)
        optMono->select();
}

/// Ends on the lowest rate that fits, whatever was chosen before.
void OptionsWma::FillWMASampleRates(qint16 bitRate)
{
    try {
        const bool stereo = optStereo->isSelected();
        cboSampleRates->clearEntries();
        for (qint32 index = 0; index <= LastWMASampleRate; ++index) {
            if (m_objWMA->IsFormatSupported(index, bitRate, stereo))
                cboSampleRates->addEntry(WMASampleRateName(index), index);
        }
        if (cboSampleRates->count() > 0)
            cboSampleRates->setListIndex(0);
    } catch (const RunTimeFailure &) { // an encoder that doesn't answer leaves the list as far as it came
    }
}

bool OptionsWma::isValid() const
{
    if (cboSampleRates->listIndex() >= 0)
        return true;
    showInformation(
        QStringLiteral("The WMA encoder has no sampling rate for the chosen WMA bit rate. Please choose "
                       "another bit rate on the page \"WMA\"."));
    return false;
}

void OptionsWma::apply()
{
    m_objWMA->setWMABitRate(cboBitRate->chosenNumber());
    m_objWMA->setWMASampleRateIndex(cboSampleRates->chosenNumber());
    m_objWMA->setWMAStereo(optStereo->isSelected());
    m_objWMA->setWMAEnableDRM(chkEnableDRM->isTicked());
}
