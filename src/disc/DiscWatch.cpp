#include "disc/DiscWatch.h"

#include "base/DiscInfo.h"
#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "base/Text.h"
#include "components/CDRipperX.h"
#include "controls/DropDownList.h"
#include "controls/ReportListView.h"
#include "platform/Dialogs.h"

#include <QTimer>

namespace {

constexpr int LeadIn = 150; // sectors before the first one, counted in FreeDB's frame offsets
constexpr double SectorsASecond = 75;

} // namespace

DiscWatch::DiscWatch(CDRipperX &engine, DiscInfo &discInfo, Dialogs &dialogs, QWidget *owner,
                     const Controls &controls, std::function<QString()> extension,
                     std::function<void()> offerDiscLookup)
    : m_engine(engine),
      m_discInfo(discInfo),
      m_dialogs(dialogs),
      m_owner(owner),
      m_controls(controls),
      m_extension(std::move(extension)),
      m_offerDiscLookup(std::move(offerDiscLookup))
{}

void DiscWatch::cboDevices_Click()
{
    try {
        readDisc();
    } catch (const RunTimeFailure &failure) {
        m_dialogs.messageBox(
            m_owner,
            {.text = QStringLiteral("Error# %1 %2").arg(failure.number()).arg(failure.description())});
    }
}

void DiscWatch::readDisc()
{
    m_controls.Timer1.stop();
    m_controls.lvwTracks.clearRows();
    if (m_engine.SelectDrive(static_cast<qint16>(m_controls.cboDevices.listIndex()))) {
        FillSpeeds();
        if (m_engine.DiscReady())
            readTracks();
    }
    m_controls.Timer1.start();
    m_offerDiscLookup();
}

void DiscWatch::readTracks()
{
    m_bDiscGone = false;
    const qint16 count = m_engine.TrackCount();
    m_discInfo.DiscSeconds = 0;
    qint32 sectors = LeadIn;
    for (qint16 track = 1; track <= count; ++track)
        sectors += readTrack(track);
    if (count > 0)
        m_controls.lvwTracks.selectRow(1);
    m_discInfo.DiscSeconds = toInt32(sectors / SectorsASecond);
}

/// Lists a track of whatever kind. Its length in sectors.
qint32 DiscWatch::readTrack(qint16 track)
{
    const qint32 start = m_engine.TrackStart(track);
    const qint32 length = m_engine.TrackLength(track);
    const QString offset = QString::number(start + LeadIn);
    m_discInfo.TrackOffsets = track == 1 ? offset : m_discInfo.TrackOffsets + ListSeparator + offset;
    const QString number = twoDigits(track);
    m_controls.lvwTracks.addRow({QString(), number, QStringLiteral("Track") + number + m_extension(),
                                 m_engine.SectorsToTime(start), m_engine.SectorsToTime(start + length),
                                 m_engine.SectorsToTime(length)});
    return length;
}

void DiscWatch::FillSpeeds()
{
    DropDownList &speeds = m_controls.cboSpeeds;
    speeds.clearEntries();
    speeds.addEntry(QStringLiteral("AUTO"), 0);
    for (int speed = 1; speed <= m_engine.MaxSpeed(); speed = speed > 4 ? speed + 4 : speed * 2)
        speeds.addEntry(QStringLiteral("%1X").arg(speed), speed);
    speeds.setListIndex(0);
}

void DiscWatch::cboSpeeds_Click()
{
    m_engine.SetSpeed(static_cast<qint16>(m_controls.cboSpeeds.chosenNumber()));
}

void DiscWatch::Timer1_Timer()
{
    switch (m_engine.DriveStatus()) {
    case CDRipperX::NoDisc:
        m_controls.lvwTracks.clearRows();
        m_bDiscGone = true;
        break;
    case CDRipperX::DiscIdle:
        if (m_bDiscGone)
            cboDevices_Click();
        break;
    default:
        break;
    }
}
