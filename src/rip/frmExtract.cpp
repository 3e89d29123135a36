#include "rip/frmExtract.h"

#include "base/DiscInfo.h"
#include "base/Formats.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "components/CDRipperX.h"
#include "components/NCTAudioInformation.h"
#include "components/VEnc.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "rip/RipHost.h"

frmExtract::frmExtract(const Desktop &desktop, const Parts &parts, std::unique_ptr<VEnc> vqfEncoder)
    : FormOf(desktop), m_parts(parts), VEnc1(std::move(vqfEncoder))
{
    setupUi(this);
    setCancelButton(cmdCancel);
    sbrTime->addWidget(sbrTime_1, 1);
    sbrTime->addWidget(sbrTime_2);
    Timer1.setObjectName(QStringLiteral("Timer1"));
    Timer1.setParent(this);
    Timer1.setInterval(500);
    attach(&Timer1, &QTimer::timeout, [this] { Timer1_Timer(); });
    attach(cmdCancel, &QPushButton::clicked, [this] { cmdCancel_Click(); });
    if (VEnc1) {
        attach(VEnc1.get(), &VEnc::VqfProgress, [this](qint32 percent) { VqfProgress(percent); });
        attach(VEnc1.get(), &VEnc::VqfFailed, [this](const QString &reason) { VqfFailed(reason); });
    }
    centerOnScreen();
    txtStatus->clear();
    Timer1.start();
}

frmExtract::~frmExtract() = default;

void frmExtract::ShowExtract(CDRipperX &objRipper, qint32 encType, QWidget *owner)
{
    m_objRipper = &objRipper;
    m_lEncType = encType;
    attach(m_objRipper, &CDRipperX::ExtractionPrepared, [this] { ExtractionPrepared(); });
    attach(m_objRipper, &CDRipperX::TrackStarted,
           [this](const QString &file, qint32 first, qint32 last, qint32 tag) {
               TrackStarted(file, first, last, tag);
           });
    attach(m_objRipper, &CDRipperX::ExtractionStatus,
           [this](qint32 code, qint32 value) { ExtractionStatus(code, value); });
    attach(m_objRipper, &CDRipperX::TrackFinished, [this] { TrackFinished(); });
    attach(m_objRipper, &CDRipperX::ExtractionComplete, [this] { ExtractionComplete(); });

    const Format &format = Formats::ofJob(encType);
    setWindowTitle(QStringLiteral("Ripping CD Track(s) to %1 File(s) ...").arg(format.jobName));
    txtFilename->setText(m_parts.host.outputDirectory() + QStringLiteral("Track") + format.rippedExtension);
    lstStatus->clear();
    sbrTime_1->clear();
    prgTotal->setValue(0);
    prgTrack->setValue(0);
    cmdFilename->setEnabled(true);
    showModal(owner);
}

void frmExtract::Form_Unload()
{
    if (m_objRipper)
        m_objRipper->disconnect(this);
    m_objRipper = nullptr;
    if (VEnc1) // which may be telling its progress at this moment
        VEnc1.release()->deleteLater();
    lstStatus->clear();
}

void frmExtract::Timer1_Timer()
{
    Timer1.stop();
    BeginExtraction();
}

void frmExtract::BeginExtraction()
{
    lstStatus->clear();
    int checked = 0;
    for (int row = 1; row <= m_parts.host.trackRowCount(); ++row)
        checked += m_parts.host.isTrackChecked(row) ? 1 : 0;
    if (checked == 0) {
        desktop().dialogs.messageBox(this, {.text = QStringLiteral("No Tracks Selected for Extraction.")});
        unload();
        return;
    }
    prgTotal->setRange(0, checked);
    showTrackPercent(0);
    showFilesDone(0);
    sbrTime_1->setText(QStringLiteral("Preparing to extract audio..."));
    m_objRipper->ClearTracks();
    m_sVqfList.clear();
    for (int row = 1; row <= m_parts.host.trackRowCount(); ++row) {
        m_iTrack = static_cast<qint16>(row);
        if (m_parts.host.isTrackChecked(row))
            queueTrack(row);
    }
    try {
        if (m_lEncType == EncVQF && !VEnc1)
            throw RunTimeFailure(RunTimeFailure::CantCreateComponent,
                                 QStringLiteral("This build of the program holds no VQF encoder"));
        if (!m_objRipper->StartExtraction())
            desktop().dialogs.messageBox(this, {.text = QStringLiteral("Extraction could not be started.")});
    } catch (const RunTimeFailure &failure) {
        desktop().dialogs.messageBox(
            this,
            {.text = QStringLiteral("Can not start ripping, please change the options from options dialog "
                                    "and try again.\nError %1 %2")
                         .arg(failure.number())
                         .arg(failure.description()),
             .icon = BoxIcon::Critical});
    }
}

void frmExtract::queueTrack(int row)
{
    const QString file = m_parts.host.outputDirectory() + m_parts.host.trackFileName(row);
    if (m_lEncType == EncVQF)
        m_sVqfList = m_sVqfList.isEmpty() ? file : m_sVqfList + VqfListSeparator + file;
    prgTrack->setRange(0, 100);
    prgTrack->setValue(0);
    const QString track = QStringLiteral("Track #") + twoDigits(m_iTrack);
    if (!m_objRipper->IsAudioTrack(m_iTrack))
        addToHiddenLog(track + QStringLiteral(" is a data track and cannot be extracted!"));
    else if (!m_objRipper->AddTrack(m_iTrack, file, m_iTrack))
        addToHiddenLog(track + QStringLiteral(" could not be added for extraction!"));
}

void frmExtract::cmdCancel_Click()
{
    if (!m_bRipping) {
        unload();
        return;
    }
    m_objRipper->CancelExtraction();
    desktop().pump.processEvents();
}

void frmExtract::addToStatus(const QString &line)
{
    txtStatus->setPlainText(line + u'\n' + txtStatus->toPlainText());
}

void frmExtract::addToHiddenLog(const QString &line)
{
    lstStatus->addItem(line);
}

void frmExtract::showTrackPercent(int percent)
{
    lblTrackProgress->setText(QStringLiteral("Current: %1%").arg(percent));
}

void frmExtract::showFilesDone(int files)
{
    prgTotal->setValue(files);
    lblTotalProgress->setText(QStringLiteral("   Total: %1/%2").arg(files).arg(prgTotal->maximum()));
}
