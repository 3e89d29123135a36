#include "converter/frmMain1.h"

#include "base/Deployment.h"
#include "controls/HandCursor.h"
#include "platform/EventPump.h"

namespace {

QString wmaNote()
{
    return QStringLiteral("If you need to convert WMA format, please download WMFdist.exe from ") +
           Deployment::WmfDistAddress + QStringLiteral(" and install it to you computer");
}

} // namespace

frmMain1::frmMain1(const Desktop &desktop, std::unique_ptr<NCTAudioFile> reader,
                   std::unique_ptr<NCTAudioFile> writer)
    : FormOf(desktop),
      FileR(std::move(reader)),
      FileW(std::move(writer)),
      m_about([this] { return makeForm<frmAbout1>(this->desktop(), Skin1); }),
      tmUsed(new QTimer(this))
{
    setupUi(this);
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    lblSrcNote->setText(wmaNote());
    lblOutNote->setText(wmaNote());
    tmUsed->setObjectName(QStringLiteral("tmUsed"));
    tmUsed->setInterval(1000);
    attachHandlers();
}

void frmMain1::attachHandlers()
{
    attach(cmdNext, &QPushButton::clicked, [this] { cmdNext_Click(); });
    attach(cmdLast, &QPushButton::clicked, [this] { cmdLast_Click(); });
    attach(cmdQuit, &QPushButton::clicked, [this] { cmdQuit_Click(); });
    attach(cmdHelp, &QPushButton::clicked, [this] { cmdHelp_Click(); });
    attach(cmdAbout, &QPushButton::clicked, [this] { cmdAbout_Click(); });
    attach(cmdFolder, &QPushButton::clicked, [this] { cmdFolder_Click(); });
    attachClick(rdSrcMP3, [this] { rdSrcMP3_Click(); });
    attachClick(rdSrcWAV, [this] { rdSrcWAV_Click(); });

    attach(cmdAdd, &QPushButton::clicked, [this] { cmdAdd_Click(); });
    attach(cmdRemove, &QPushButton::clicked, [this] { cmdRemove_Click(); });
    attach(cmdClearAll, &QPushButton::clicked, [this] { cmdClearAll_Click(); });
    attach(lstFile, &SourceList::pathsDropped,
           [this](const QStringList &paths) { lstFile_PathsDropped(paths); });

    attachClick(chMP3VBR, [this] { chMP3VBR_Click(); });
    attachClick(chkOGGEncoder, [this] { chkOGGEncoder_Click(); });
    attachClick(chkOGGVBREnabled, [this] { chkOGGVBREnabled_Click(); });
    attach(hsMP3CBRQuality, &QSlider::valueChanged, [this] { hsMP3CBRQuality_Change(); });
    attach(hsMP3VBRQuality, &QSlider::valueChanged, [this] { hsMP3VBRQuality_Change(); });
    attach(hsOGGVBRQuality, &QSlider::valueChanged, [this] { hsOGGVBRQuality_Change(); });
    attachClick(cboWMASettings, [this] { ShowWMADescription(); });
    attach(txtWMF9, &LinkText::clicked, [this] { txtWMF9_Click(); });
    attach(txtWMF9, &LinkText::gotFocus, [this] { txtWMF9_GotFocus(); });
    attach(txtWMF7, &LinkText::clicked, [this] { txtWMF7_Click(); });
    attach(txtWMF7, &LinkText::gotFocus, [this] { txtWMF7_GotFocus(); });

    attach(tmUsed, &QTimer::timeout, [this] { tmUsed_Timer(); });
}

void frmMain1::Form_Load()
{
    m_nStep = SourceFormat;
    ShowStep();
    SetValues();
    Skin1.ApplySkin(this);
    m_Status.OutputFormat = m_Status.OutputFormatString = QStringLiteral("WAV");
    m_Status.OutputFolder = txtFolder->text();
    m_Status.InputFormat = QStringLiteral("MP3");
    for (QWidget *button : {cmdAbout, cmdHelp, cmdLast, cmdNext, cmdQuit, cmdAdd, cmdRemove, cmdClearAll})
        SetHandCursor(button);
    FileW->setExtendedFormats(true);
    FileR->setExtendedFormats(true);
    desktop().pump.processEvents();
    LoadWMAProfiles();
    SetHandCursor(txtWMF9);
    SetHandCursor(txtWMF7);
}

void frmMain1::Form_Unload()
{
    // A running job sees this as it sees a stop.
    m_bConverting = false;
    tmUsed->stop();
}
