#include "base/SkipFailures.h"
#include "components/VorbisEncoderX.h"
#include "settings/OptionLists.h"
#include "settings/SettingsKeys.h"
#include "settings/frmOptions.h"

namespace {

constexpr int Row128 = 9;

} // namespace

void frmOptions::fillOggPage()
{
    FillOGGBitRates(*cboNominalBitRate);
    cboNominalBitRate->setListIndex(Row128);
    FillOGGBitRates(*cboMinBitRate);
    cboMinBitRate->setListIndex(0);
    FillOGGBitRates(*cboMaxBitRate);
    cboMaxBitRate->setListIndex(0);
    chkUseAdvanced->setTicked(false);
    chkUseAdvanced_Click();
}

void frmOptions::loadOggPage()
{
    const SkipFailures skip;
    skip([&] { chkUseAdvanced->setTicked(stored(Ini::OGG_UseAdvanced) == 1); });
    skip([&] { cboNominalBitRate->chooseNumber(stored(Ini::OGG_BitRate)); });
    skip([&] { cboMaxBitRate->chooseNumber(stored(Ini::OGG_MaxBitRate)); });
    skip([&] { cboMinBitRate->chooseNumber(stored(Ini::OGG_MinBitRate)); });
}

void frmOptions::saveOggPage() const
{
    store(Ini::OGG_UseAdvanced, chkUseAdvanced->isTicked() ? 1 : 0);
    store(Ini::OGG_BitRate, cboNominalBitRate->chosenNumber());
    store(Ini::OGG_MaxBitRate, cboMaxBitRate->chosenNumber());
    store(Ini::OGG_MinBitRate, cboMinBitRate->chosenNumber());
}

void frmOptions::resetOggPage()
{
    chkUseAdvanced->setTicked(false);
    cboNominalBitRate->setListIndex(Row128);
    cboMaxBitRate->setListIndex(0);
    cboMinBitRate->setListIndex(0);
}

/// The limits keep their choice without the tick, and are stored and passed on as they stand.
void frmOptions::chkUseAdvanced_Click()
{
    cboMinBitRate->setEnabled(chkUseAdvanced->isTicked());
    cboMaxBitRate->setEnabled(chkUseAdvanced->isTicked());
}

bool frmOptions::validateOggBitRates(const OggWords &words)
{
    switch (findVorbisFault(cboNominalBitRate->chosenNumber(), cboMinBitRate->chosenNumber(),
                            cboMaxBitRate->chosenNumber())) {
    case VorbisFault::None:
        return true;
    case VorbisFault::NominalAboveMaximum:
        showInformation(words.nominalAboveMaximum);
        break;
    case VorbisFault::NominalBelowMinimum:
        showInformation(words.nominalBelowMinimum);
        break;
    case VorbisFault::MinimumAboveMaximum:
        showInformation(words.minimumAboveMaximum);
        break;
    }
    return false;
}

bool frmOptions::ApplyOGGSettings()
{
    if (!validateOggBitRates({.nominalAboveMaximum =
                                  QStringLiteral("Nominal Bit Rate must be lower than the Maximum Bit Rate"),
                              .nominalBelowMinimum =
                                  QStringLiteral("Nominal Bit Rate must be higher than the Minimum Bit Rate"),
                              .minimumAboveMaximum = QStringLiteral(
                                  "The Minimum Bit Rate must be lower than the Maximum Bit Rate")}))
        return false;
    m_objVorbis->setNominalBitRate(cboNominalBitRate->chosenNumber());
    m_objVorbis->setMaxBitRate(cboMaxBitRate->chosenNumber());
    m_objVorbis->setMinBitRate(cboMinBitRate->chosenNumber());
    return true;
}
