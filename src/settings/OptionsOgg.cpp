#include "settings/OptionsOgg.h"

#include "base/SkipFailures.h"
#include "components/VorbisEncoderX.h"
#include "settings/OptionLists.h"
#include "settings/SettingsKeys.h"

namespace {

constexpr int OggRow128 = 9;

} // namespace

OptionsOgg::OptionsOgg(Form &form, const SettingsStore &store) : OptionsPage(form, store)
{
    setupUi(this);
    attachClick(chkUseAdvanced, [this] { chkUseAdvanced_Click(); });
}

void OptionsOgg::fill(VorbisEncoderX &encoder)
{
    m_objVorbis = &encoder;
    FillOGGBitRates(*cboNominalBitRate);
    cboNominalBitRate->setListIndex(OggRow128);
    FillOGGBitRates(*cboMinBitRate);
    cboMinBitRate->setListIndex(0);
    FillOGGBitRates(*cboMaxBitRate);
    cboMaxBitRate->setListIndex(0);
    chkUseAdvanced->setTicked(false);
    chkUseAdvanced_Click();
}

void OptionsOgg::load()
{
    const SkipFailures skip;
    skip([&] { chkUseAdvanced->setTicked(stored(Ini::OGG_UseAdvanced) == 1); });
    skip([&] { cboNominalBitRate->chooseNumber(stored(Ini::OGG_BitRate)); });
    skip([&] { cboMaxBitRate->chooseNumber(stored(Ini::OGG_MaxBitRate)); });
    skip([&] { cboMinBitRate->chooseNumber(stored(Ini::OGG_MinBitRate)); });
}

void OptionsOgg::save() const
{
    store(Ini::OGG_UseAdvanced, chkUseAdvanced->isTicked() ? 1 : 0);
    store(Ini::OGG_BitRate, cboNominalBitRate->chosenNumber());
    store(Ini::OGG_MaxBitRate, cboMaxBitRate->chosenNumber());
    store(Ini::OGG_MinBitRate, cboMinBitRate->chosenNumber());
}

void OptionsOgg::reset()
{
    chkUseAdvanced->setTicked(false);
    cboNominalBitRate->setListIndex(OggRow128);
    cboMaxBitRate->setListIndex(0);
    cboMinBitRate->setListIndex(0);
}

/// The limits keep their choice without the tick, and are stored and passed on as they stand.
void OptionsOgg::chkUseAdvanced_Click()
{
    cboMinBitRate->setEnabled(chkUseAdvanced->isTicked());
    cboMaxBitRate->setEnabled(chkUseAdvanced->isTicked());
}

bool OptionsOgg::isValid() const
{
    return validateBitRates(
        {.nominalAboveMaximum =
             QStringLiteral("Nominal OGG Vorbis Bit Rate must be lower than the Maximum OGG Vorbis Bit Rate"),
         .nominalBelowMinimum = QStringLiteral(
             "Nominal OGG Vorbis Bit Rate must be higher than the Minimum OGG Vorbis Bit Rate"),
         .minimumAboveMaximum = QStringLiteral(
             "The Minimum OGG Vorbis Bit Rate must be lower than the Maximum OGG Vorbis Bit Rate")});
}

bool OptionsOgg::validateBitRates(const OggWords &words) const
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

bool OptionsOgg::apply()
{
    if (!validateBitRates({.nominalAboveMaximum =
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
