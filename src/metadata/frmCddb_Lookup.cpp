// The lookup. A failing statement of it is passed over.
#include "base/DiscInfo.h"
#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "base/Text.h"
#include "components/CDDB.h"
#include "metadata/Genres.h"
#include "metadata/TrackListHost.h"
#include "metadata/frmCddb.h"
#include "platform/EventPump.h"

#include <QScopedValueRollback>

void frmCddb::cmdGet_Click()
{
    if (m_bExchanging)
        return;
    const QScopedValueRollback exchanging(m_bExchanging, true);
    const SkipFailures skip;
    skip([&] { followDisc(); });
    writeConnection(skip);
    std::optional<qint16> status = CDDB::OtherFailure; // where there is no thread for it
    skip([&] {
        status = runExchange([this, id = txtID->text()](const std::stop_token &stop) {
            qint16 answer = CDDB::Found;
            SkipFailures()([&] { answer = CDDB1->QueryDisc(id, stop); });
            return answer;
        });
    });
    if (!status)
        return;
    bool isNewDisc = false;
    skip([&] { isNewDisc = followDisc(); });
    if (isNewDisc)
        skip([&] { showInformation(QStringLiteral("The disc was changed meanwhile, please try again.")); });
    else if (status == CDDB::Found)
        takeLookup();
    else if (status == CDDB::NotFound)
        skip([&] { showInformation(QStringLiteral("No CD Information")); });
    else
        skip([&] { showFailure(*status); });
}

void frmCddb::takeLookup()
{
    const SkipFailures skip;
    DiscInfo &disc = m_parts.discInfo;
    QString report;
    skip([&] { report = lookupReport(); });
    skip([&] { disc.TrackTitles = CDDB1->Titles(); });
    skip([&] { disc.Album = CDDB1->Album(); });
    skip([&] { disc.Artist = CDDB1->Artist(); });
    skip([&] { disc.GenreIndex = GenreIndexFromName(CDDB1->Genre(), m_parts.AInfo); });
    skip([&] { disc.Year = CDDB1->Year(); });
    skip([&] { disc.Comment = CDDB1->Comments(); });
    skip([&] { txtTitles->setPlainText(report); });
    skip([&] { m_parts.host.UpdateFileNamesWithTitles(); });
    skip([&] { desktop().pump.processEvents(); });
    skip([&] { showInformation(QStringLiteral("Downloaded Successfully!")); });
    skip([&] { unload(); });
}

QString frmCddb::lookupReport() const
{
    QStringList lines{
        QStringLiteral("Album: ") + CDDB1->Album(),
        QStringLiteral("Artist: ") + CDDB1->Artist(),
        QStringLiteral("Category: ") + CDDB1->Category(),
        QStringLiteral("Genre: ") + CDDB1->Genre(),
        QStringLiteral("Year: ") + CDDB1->Year(),
        QStringLiteral("Disk Length: ") + QString::number(CDDB1->DiscLength()),
        QStringLiteral("Comments: ") + CDDB1->Comments(),
        QStringLiteral("Tracks: ") + QString::number(CDDB1->TrackCount()),
        QStringLiteral("Titles: "),
    };
    const QStringList titles = splitText(CDDB1->Titles(), ListSeparator);
    for (int track = 1; track < titles.size(); ++track) // the part behind the last separator is no title
        lines += QStringLiteral("Title %1: ").arg(twoDigits(track)) + titles[track - 1];
    return lines.join(QStringLiteral("\r\n"));
}
