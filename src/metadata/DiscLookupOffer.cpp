#include "metadata/DiscLookupOffer.h"

#include "platform/Dialogs.h"
#include "settings/SettingsStore.h"

#include <QWidget>

DiscLookupOffer::DiscLookupOffer(const Parts &parts, std::function<bool()> mayAsk,
                                 std::function<void()> showCddb)
    : m_parts(parts),
      m_mayAsk(std::move(mayAsk)),
      m_showCddb(std::move(showCddb)),
      Timer3(new QTimer(parts.mainWindow))
{
    Timer3->setObjectName(QStringLiteral("Timer3"));
    Timer3->setInterval(3000);
}

void DiscLookupOffer::OfferDiscLookup(int tracks)
{
    Timer3->setInterval(1000);
    if (tracks == 0)
        return;
    if (m_parts.settings.ReadDownloadFreeDBOption())
        Timer3->start();
    else
        Timer3->stop();
}

void DiscLookupOffer::Timer3_Timer()
{
    if (!m_mayAsk())
        return;
    Timer3->stop();
    const BoxAnswer answer = m_parts.dialogs.messageBox(
        m_parts.mainWindow,
        {.text = QStringLiteral("Do you want to download the CD information from the Internet freedb?"),
         .icon = BoxIcon::Question,
         .buttons = BoxButtons::YesNo,
         .title = QStringLiteral("Download from FreeDB")});
    if (answer == BoxAnswer::Yes)
        m_showCddb();
}
