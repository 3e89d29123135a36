#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "settings/SettingsKeys.h"
#include "settings/frmOptions.h"

void frmOptions::loadOtherPage()
{
    const SkipFailures skip;
    skip([&] { chkSaveID3->setTicked(toYesNo(m_store.read(Ini::SaveID3))); });
    skip([&] { chkExplore->setTicked(toYesNo(m_store.read(Ini::OpenExplorer))); });
    skip([&] { chkDownload->setTicked(toYesNo(m_store.read(Ini::DownloadFreeDB))); });
}

void frmOptions::saveOtherPage() const
{
    m_store.write(Ini::SaveID3, yesNoText(chkSaveID3->isTicked()));
    m_store.write(Ini::OpenExplorer, yesNoText(chkExplore->isTicked()));
    m_store.write(Ini::DownloadFreeDB, yesNoText(chkDownload->isTicked()));
}

void frmOptions::resetOtherPage()
{
    chkSaveID3->setTicked(true);
    chkDownload->setTicked(true);
    chkExplore->setTicked(true);
}
