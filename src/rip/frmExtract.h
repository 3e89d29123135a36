#pragma once

#include "platform/Form.h"
#include "ui_frmExtract.h"

#include <QDateTime>
#include <QTimer>
#include <memory>

class CDRipperX;
class NCTAudioInformation;
class RipHost;
class SettingsStore;
class VEnc;
struct DiscInfo;

/// The ripping job: fills the engine's queue, shows what the engine reports, saves track information, and for
/// VQF turns the ripped files by a second pass. Modal; the job starts by itself half a second after loading.
class frmExtract : public FormOf<QDialog>, private Ui::frmExtract
{
    Q_OBJECT

public:
    /// What the job works with; all of it outlives the window.
    struct Parts
    {
        RipHost &host;
        const DiscInfo &discInfo;
        const SettingsStore &settings;
        NCTAudioInformation &AInfo;
    };

    /// `vqfEncoder` may be nothing where the build has none.
    frmExtract(const Desktop &desktop, const Parts &parts, std::unique_ptr<VEnc> vqfEncoder);
    ~frmExtract() override;

    /// Runs a job of the format `encType` on the engine; returns when the window is closed.
    void ShowExtract(CDRipperX &objRipper, qint32 encType, QWidget *owner);

private:
    void Form_Unload() override;

    void Timer1_Timer();
    void BeginExtraction();
    void queueTrack(int row);
    void cmdCancel_Click();

    void ExtractionPrepared();
    void TrackStarted(const QString &file, qint32 firstSector, qint32 lastSector, qint32 tag);
    void ExtractionStatus(qint32 code, qint32 value);
    void showProgress(qint32 sector);
    void TrackFinished();
    void ExtractionComplete();

    void SaveTrackInfo(const QString &strFile, qint16 track);

    /// Between the paths of a VQF job's temporary files.
    static inline const QString VqfListSeparator = QStringLiteral("{;}#$");

    void StartVqfPass();
    void setVqfFiles();
    void VqfProgress(qint32 percent);
    void VqfFailed(const QString &reason);
    void finishVqfFile();

    void addToStatus(const QString &line);
    void addToHiddenLog(const QString &line);
    void showTrackPercent(int percent);
    void showFilesDone(int files);

    Parts m_parts;
    std::unique_ptr<VEnc> VEnc1;
    QTimer Timer1;

    CDRipperX *m_objRipper = nullptr;
    qint32 m_lEncType = 0;
    qint16 m_iTrack = 0;
    QString m_sFile;
    qint32 m_lFirstSector = 0;
    qint32 m_lLastSector = 0;
    QDateTime m_dStarted;
    bool m_bRipping = false;

    QString m_sVqfList;
    QStringList m_asVqfFiles;
    qint16 m_iVqfIndex = 0;
    qint16 m_iVqfCount = 0;
};
