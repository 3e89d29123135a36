#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "components/MP3EncoderX.h"
#include "settings/OptionLists.h"
#include "settings/SettingsKeys.h"
#include "settings/WindowsVersion.h"
#include "settings/frmOptions.h"

namespace {

constexpr int Row128 = 8;

} // namespace

void frmOptions::fillMp3Page()
{
    FillMP3BitRates(*cboCBRRate);
    cboCBRRate->setListIndex(Row128);
    FillMP3BitRates(*cboVBRMin);
    cboVBRMin->setListIndex(0);
    FillMP3BitRates(*cboVBRMax);
    cboVBRMax->setListIndex(cboVBRMax->count() - 1);
    FillChannelModes(*cboChannelMode);
    UpdateMP3Controls();
}

void frmOptions::loadMp3Page()
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

void frmOptions::saveMp3Page() const
{
    store(Ini::MP3_QualityMode, optNormal->isSelected() ? 1 : 0);
    store(Ini::MP3_EncodingMethod, optCBR->isSelected() ? 0 : 1);
    store(Ini::MP3_CBR_BitRate, cboCBRRate->chosenNumber());
    store(Ini::MP3_VBR_Quality, sldVBRLevel->value());
    store(Ini::MP3_VBR_MaxBitRate, cboVBRMax->chosenNumber());
    store(Ini::MP3_VBR_MinBitRate, cboVBRMin->chosenNumber());
    store(Ini::MP3_ChannelMode, cboChannelMode->chosenNumber());
}

void frmOptions::resetMp3Page()
{
    optCBR->select();
    cboCBRRate->setListIndex(Row128);
    cboVBRMin->setListIndex(0);
    cboVBRMax->setListIndex(cboVBRMax->count() - 1);
    sldVBRLevel->setValue(0);
    optNormal->select();
    cboChannelMode->setListIndex(0);
}

void frmOptions::UpdateMP3Controls()
{
    const bool constant = optCBR->isSelected();
    cboCBRRate->setEnabled(constant);
    cboVBRMin->setEnabled(!constant);
    cboVBRMax->setEnabled(!constant);
    sldVBRLevel->setEnabled(!constant);
}

bool frmOptions::ApplyMP3Settings()
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
