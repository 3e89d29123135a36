#include "settings/OptionsOther.h"

#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "settings/SettingsKeys.h"

OptionsOther::OptionsOther(Form &form, const SettingsStore &store) : OptionsPage(form, store)
{
    setupUi(this);
}

void OptionsOther::load()
{
    const SkipFailures skip;
    skip([&] { chkSaveID3->setTicked(toYesNo(settings().read(Ini::SaveID3))); });
    skip([&] { chkExplore->setTicked(toYesNo(settings().read(Ini::OpenExplorer))); });
    skip([&] { chkDownload->setTicked(toYesNo(settings().read(Ini::DownloadFreeDB))); });
}

void OptionsOther::save() const
{
    settings().write(Ini::SaveID3, yesNoText(chkSaveID3->isTicked()));
    settings().write(Ini::OpenExplorer, yesNoText(chkExplore->isTicked()));
    settings().write(Ini::DownloadFreeDB, yesNoText(chkDownload->isTicked()));
}

void OptionsOther::reset()
{
    chkSaveID3->setTicked(true);
    chkDownload->setTicked(true);
    chkExplore->setTicked(true);
}
