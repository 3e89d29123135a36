#include "settings/OptionsMp3.h"

#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "components/MP3EncoderX.h"
#include "settings/OptionLists.h"
#include "settings/SettingsKeys.h"
#include "settings/WindowsVersion.h"

namespace {

constexpr int Mp3Row128 = 8;

} // namespace

OptionsMp3::OptionsMp3(Form &form, const SettingsStore &store) : OptionsPage(form, store)
{
    setupUi(this);
    attachClick(optCBR, [this] { UpdateMP3Controls(); });
    attachClick(optVBR, [this] { UpdateMP3Controls(); });
}

void OptionsMp3::fill(MP3EncoderX &encoder)
{
    m_objMP3 = &encoder;
    FillMP3BitRates(*cboCBRRate);
    cboCBRRate->setListIndex(Mp3Row128);
    FillMP3BitRates(*cboVBRMin);
    cboVBRMin->setListIndex(0);
    FillMP3BitRates(*cboVBRMax);
    cboVBRMax->setListIndex(cboVBRMax->count() - 1);
    FillChannelModes(*cboChannelMode);
    UpdateMP3Controls();
}

void OptionsMp3::load()
{
    const SkipFailures skip;
    skip([&] { (stored(Ini::MP3_QualityMode) == 1 ? optNormal : optStudio)->select(); });
    skip([&] { (stored(Ini::MP3_EncodingMethod) == 0 ? optCBR : optVBR)->select(); });
    skip([&] { cboCBRRate->chooseNumber(stored(Ini::MP3_CBR_BitRate)); });
    skip([&] { sldVBRLevel->setValue(toInt32(stored(Ini::MP3_VBR_Quality))); });
    skip([&] { cboVBRMax->chooseNumber(stored(Ini::MP3_VBR_MaxBitRate)); });
    skip([&] { cboVBRMin->chooseNumber(stored(Ini::MP3_VBR_MinBitRate)); });
    skip([&] { cboChannelMode->chooseNumber(stored(Ini::MP3_ChannelMode)); });
}

void OptionsMp3::save() const
{
    store(Ini::MP3_QualityMode, optNormal->isSelected() ? 1 : 0);
    store(Ini::MP3_EncodingMethod, optCBR->isSelected() ? 0 : 1);
    store(Ini::MP3_CBR_BitRate, cboCBRRate->chosenNumber());
    store(Ini::MP3_VBR_Quality, sldVBRLevel->value());
    store(Ini::MP3_VBR_MaxBitRate, cboVBRMax->chosenNumber());
    store(Ini::MP3_VBR_MinBitRate, cboVBRMin->chosenNumber());
    store(Ini::MP3_ChannelMode, cboChannelMode->chosenNumber());
}

void OptionsMp3::reset()
{
    optCBR->select();
    cboCBRRate->setListIndex(Mp3Row128);
    cboVBRMin->setListIndex(0);
    cboVBRMax->setListIndex(cboVBRMax->count() - 1);
    sldVBRLevel->setValue(0);
    optNormal->select();
    cboChannelMode->setListIndex(0);
}

void OptionsMp3::UpdateMP3Controls()
{
    const bool constant = optCBR->isSelected();
    cboCBRRate->setEnabled(constant);
    cboVBRMin->setEnabled(!constant);
    cboVBRMax->setEnabled(!constant);
    sldVBRLevel->setEnabled(!constant);
}

bool OptionsMp3::isValid() const
{
    if (cboVBRMax->chosenNumber() > cboVBRMin->chosenNumber())
        return true;
    showInformation(QStringLiteral("Minimum MP3 Bit Rate must be less than the Maximum MP3 Bit Rate."));
    return false;
}

bool OptionsMp3::apply()
{
    m_objMP3->setQualityMode(optNormal->isSelected() ? 1 : 0);
    if (optCBR->isSelected()) {
        m_objMP3->setCBRBitRate(cboCBRRate->chosenNumber());
        m_objMP3->setChannelMode(cboChannelMode->chosenNumber());
        m_objMP3->setEncodingMethod(0);
        return true;
    }
    // Unlike the load of the settings this asks for one of the two systems that need the clamp.
    const bool clamped = GetOSName(desktop().systemVersion) == QStringLiteral("Windows XP");
    const int level = sldVBRLevel->value();
    m_objMP3->setVBRQuality(clamped && level > 1 ? 1 : level);
    m_objMP3->setVBRMaxBitRate(cboVBRMax->chosenNumber());
    m_objMP3->setVBRMinBitRate(cboVBRMin->chosenNumber());
    m_objMP3->setChannelMode(cboChannelMode->chosenNumber());
    m_objMP3->setEncodingMethod(1);
    m_objMP3->setVBRMode(3);
    if (m_objMP3->VBRMaxBitRate() <= m_objMP3->VBRMinBitRate()) {
        showInformation(QStringLiteral("Minimum Bit Rate must be less than the Maximum Bit Rate."));
        return false;
    }
    return true;
}
