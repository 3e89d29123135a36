#include "converter/frmMain1.h"

#include "base/Formats.h"
#include "controls/HandCursor.h"
#include "converter/frmConvert.h"
#include "converter/frmMP3Set.h"
#include "converter/frmOggSet.h"
#include "converter/frmOtherSet.h"
#include "converter/frmSource.h"
#include "converter/frmSrcFmt.h"
#include "converter/frmWAVSet.h"
#include "converter/frmWMASet.h"
#include "platform/EventPump.h"

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
    addSteps();
    tmUsed->setObjectName(QStringLiteral("tmUsed"));
    tmUsed->setInterval(1000);
    attachHandlers();
    // A stop must get through however long a source takes.
    FileR->setWhileReading([this] {
        this->desktop().pump.processEvents();
        return m_bConverting;
    });
}

void frmMain1::addSteps()
{
    m_output = new frmOutFmt;
    m_source = new frmSrcFmt(*this, *m_output);
    m_sources = new frmSource(*this);
    m_wma = new frmWMASet(*this);
    m_settings = {new frmMP3Set(*this), new frmWAVSet(*this), m_wma, new frmOggSet(*this)};
    m_other = new frmOtherSet(*this);
    m_converting = new frmConvert;
    for (StepFrame *step : std::initializer_list<StepFrame *>{m_source, m_sources, m_output})
        frames->addWidget(step);
    for (FormatPage *page : m_settings)
        frames->addWidget(page);
    for (StepFrame *step : std::initializer_list<StepFrame *>{m_other, m_converting})
        frames->addWidget(step);
    // The buttons come behind the steps, whose controls were added behind them.
    QWidget *last = previousInFocusChain();
    for (QPushButton *button : {cmdHelp, cmdAbout, cmdLast, cmdNext, cmdQuit}) {
        setTabOrder(last, button);
        last = button;
    }
}

void frmMain1::attachHandlers()
{
    attach(cmdNext, &QPushButton::clicked, [this] { cmdNext_Click(); });
    attach(cmdLast, &QPushButton::clicked, [this] { cmdLast_Click(); });
    attach(cmdQuit, &QPushButton::clicked, [this] { cmdQuit_Click(); });
    attach(cmdHelp, &QPushButton::clicked, [this] { cmdHelp_Click(); });
    attach(cmdAbout, &QPushButton::clicked, [this] { cmdAbout_Click(); });
    attach(m_sources, &frmSource::changed, [this] { cmdNext->setEnabled(m_sources->count() > 0); });
    attach(m_wma, &frmWMASet::linkFocused, [this] { cmdNext->setFocus(); });
    attach(tmUsed, &QTimer::timeout, [this] { tmUsed_Timer(); });
}

void frmMain1::Form_Load()
{
    m_nStep = SourceFormat;
    ShowStep();
    Skin1.ApplySkin(this);
    m_Status.OutputFormat = m_Status.OutputFormatString = QStringLiteral("WAV");
    m_Status.OutputFolder = m_other->folder();
    m_Status.InputFormat = QStringLiteral("MP3");
    for (QPushButton *button : {cmdAbout, cmdHelp, cmdLast, cmdNext, cmdQuit})
        SetHandCursor(button);
    allowExtendedFormats();
    desktop().pump.processEvents();
    allowExtendedFormats(); // whatever ran meanwhile
    m_wma->LoadWMAProfiles(*FileR);
}

void frmMain1::allowExtendedFormats()
{
    FileW->setExtendedFormats(true);
    FileR->setExtendedFormats(true);
}

void frmMain1::Form_Unload()
{
    // A running job sees this as it sees a stop.
    m_bConverting = false;
    tmUsed->stop();
}
