#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "components/WMAEncoderX.h"
#include "settings/OptionLists.h"
#include "settings/SettingsKeys.h"
#include "settings/frmOptions.h"

namespace {

constexpr int Row128 = 14;

} // namespace

void frmOptions::fillWmaPage()
{
    FillWMABitRates(*cboBitRate);
    cboBitRate->setListIndex(Row128);
}

/// A stored channel option that changes the selection refills the sample rates: the list's first one then
/// stands in place of the stored one.
void frmOptions::loadWmaPage()
{
    const SkipFailures skip;
    skip([&] { cboBitRate->chooseNumber(stored(Ini::WMA_BitRate)); });
    skip([&] { cboSampleRates->chooseNumber(stored(Ini::WMA_SampleRate)); });
    skip([&] { (toYesNo(m_store.read(Ini::WMA_EncodeStereo)) ? optStereo : optMono)->select(); });
    skip([&] { chkEnableDRM->setTicked(toYesNo(m_store.read(Ini::WMA_EnableDRM))); });
}

void frmOptions::saveWmaPage() const
{
    store(Ini::WMA_BitRate, cboBitRate->chosenNumber());
    store(Ini::WMA_SampleRate, cboSampleRates->chosenNumber());
    m_store.write(Ini::WMA_EncodeStereo, yesNoText(optStereo->isSelected()));
    m_store.write(Ini::WMA_EnableDRM, yesNoText(chkEnableDRM->isTicked()));
}

void frmOptions::resetWmaPage()
{
    cboBitRate->setListIndex(Row128);
    if (cboSampleRates->count() > 0)
        cboSampleRates->setListIndex(0);
    optStereo->select();
    chkEnableDRM->setTicked(false);
}

void frmOptions::cboBitRate_Click()
{
    const qint16 bitRate = GetWMABitRate();
    UpdateWMAChannels(bitRate);
    FillWMASampleRates(bitRate);
}

qint16 frmOptions::GetWMABitRate() const
{
    try {
        return toInt16(double(cboBitRate->chosenNumber()));
    } catch (const RunTimeFailure &) { // nothing is chosen
        return 0;
    }
}

void frmOptions::UpdateWMAChannels(qint16 bitRate)
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
void frmOptions::FillWMASampleRates(qint16 bitRate)
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

/// Without a sample rate there is nothing to store and nothing to encode with.
bool frmOptions::hasWmaSampleRate()
{
    if (cboSampleRates->listIndex() >= 0)
        return true;
    showInformation(
        QStringLiteral("The WMA encoder has no sampling rate for the chosen WMA bit rate. Please choose "
                       "another bit rate on the page \"WMA\"."));
    return false;
}

void frmOptions::ApplyWMASettings()
{
    m_objWMA->setWMABitRate(cboBitRate->chosenNumber());
    m_objWMA->setWMASampleRateIndex(cboSampleRates->chosenNumber());
    m_objWMA->setWMAStereo(optStereo->isSelected());
    m_objWMA->setWMAEnableDRM(chkEnableDRM->isTicked());
}
