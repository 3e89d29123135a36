// What the engine reports while a job runs.
#include "base/DiscInfo.h"
#include "base/Formats.h"
#include "base/Numbers.h"
#include "components/CDRipperX.h"
#include "components/VEnc.h"
#include "naming/Paths.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "rip/RipHost.h"
#include "rip/frmExtract.h"
#include "settings/SettingsStore.h"

#include <cmath>

namespace {

/// The words of the hidden log for a report; none for signs of life.
QString wordsFor(qint32 code, qint32 value)
{
    switch (code) {
    case CDRipperX::JitterNotCorrected:
        return QStringLiteral("Jitter Could Not Be Corrected.  %1").arg(value);
    case CDRipperX::SpeedAdjusted:
        return QStringLiteral("Speed Adjusted to Correct Error.");
    case CDRipperX::ReadFailed:
        return QStringLiteral("Read Failed.");
    case CDRipperX::RetryingRead:
        return QStringLiteral("Retrying Read.");
    case CDRipperX::RetryFailed:
        return QStringLiteral("Retry Failed.");
    case CDRipperX::FileAborted:
        return QStringLiteral("File Aborted.");
    case CDRipperX::BufferFailed:
        return QStringLiteral("Buffer Could Not Be Initialized.");
    case CDRipperX::CreateFailed:
        return QStringLiteral("Error Creating File.");
    case CDRipperX::WriteFailed:
        return QStringLiteral("Error Writing File.");
    case CDRipperX::CloseFailed:
        return QStringLiteral("Error Closing File.");
    case CDRipperX::DriveFailed:
        return QStringLiteral("Drive Could Not Be Initialized.");
    case CDRipperX::Cancelled:
        return QStringLiteral("Ripping Cancelled.");
    default:
        return {};
    }
}

} // namespace

void frmExtract::ExtractionPrepared()
{
    addToHiddenLog(QStringLiteral("Preparing for Audio Extraction!"));
    m_dStarted = desktop().clock.now();
    m_bRipping = true;
    cmdFilename->setEnabled(false);
    setCursor(Qt::WaitCursor);
}

void frmExtract::TrackStarted(const QString &file, qint32 firstSector, qint32 lastSector, qint32 tag)
{
    m_lFirstSector = firstSector;
    m_lLastSector = lastSector;
    addToHiddenLog(QStringLiteral("Ripping Track#%1 to %2").arg(twoDigits(tag), file));
    m_iTrack = toInt16(static_cast<double>(tag));
    m_sFile = file;
    addToStatus(QStringLiteral("Start Ripping: ") + ExtractFile(file));
}

void frmExtract::ExtractionStatus(qint32 code, qint32 value)
{
    const double seconds = std::abs(static_cast<double>(m_dStarted.secsTo(desktop().clock.now())));
    sbrTime_2->setText(QStringLiteral("Seconds: %1").arg(toInt16(seconds)));
    if (code == CDRipperX::Progress) {
        showProgress(value);
    } else if (const QString words = wordsFor(code, value); !words.isEmpty()) {
        addToHiddenLog(words);
    }
    desktop().pump.processEvents();
}

void frmExtract::showProgress(qint32 sector)
{
    const qint32 done = sector - m_lFirstSector;
    const qint32 length = m_lLastSector - m_lFirstSector;
    sbrTime_1->setText(QStringLiteral("Track ") + twoDigits(m_iTrack) + QStringLiteral("     ") +
                       m_objRipper->SectorsToTime(done) + QStringLiteral(" / ") +
                       m_objRipper->SectorsToTime(length));
    prgTrack->setValue(toInt16(divide(done * 100.0, length)));
    showTrackPercent(prgTrack->value());
}

void frmExtract::TrackFinished()
{
    addToHiddenLog(QStringLiteral("Finished Ripping Track#%1 to %2").arg(twoDigits(m_iTrack), m_sFile));
    addToStatus(QStringLiteral("Finished: ") + ExtractFile(m_sFile));
    showFilesDone(prgTotal->value() + 1);
    if (m_parts.settings.ReadSaveID3Option() && m_parts.discInfo.SaveToFiles &&
        Formats::ofJob(m_lEncType).savesTags)
        SaveTrackInfo(m_sFile, m_iTrack);
}

void frmExtract::ExtractionComplete()
{
    addToHiddenLog(QStringLiteral("Audio Ripping Complete!"));
    addToStatus(QStringLiteral("All files are ripped!"));
    m_bRipping = false;
    cmdFilename->setEnabled(true);
    setCursor(Qt::ArrowCursor);
    if (m_lEncType == EncVQF) {
        StartVqfPass();
        return;
    }
    const QString completed = QStringLiteral("Audio CD Ripping Completed!");
    desktop().dialogs.messageBox(this, {.text = completed, .title = completed});
    if (m_parts.settings.ReadOpenExplorerOption())
        m_parts.host.cmdIE_Click();
    unload();
}
