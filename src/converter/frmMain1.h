#pragma once

#include "components/NCTAudioFile.h"
#include "converter/ConvertStatus.h"
#include "converter/Skin.h"
#include "converter/frmAbout1.h"
#include "platform/Dialogs.h"
#include "platform/Form.h"
#include "ui_frmMain1.h"

#include <QTimer>
#include <array>

class FormatPage;
class StepFrame;
class frmConvert;
class frmOtherSet;
class frmOutFmt;
class frmSource;
class frmSrcFmt;
class frmWMASet;

/// The Audio Converter: six steps from a list of files to files of another format. It stands beside the main
/// window and shares no data with it; nothing of it is stored.
///
/// A conversion runs inside the click of `cmdNext` and lets pending events through. Once the window has been
/// closed, it ends at the next of these passes as a stop would end it.
class frmMain1 : public FormOf<QDialog>, private Ui::frmMain1
{
    Q_OBJECT

public:
    /// `reader` and `writer` live as long as the window.
    frmMain1(const Desktop &desktop, std::unique_ptr<NCTAudioFile> reader,
             std::unique_ptr<NCTAudioFile> writer);

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    enum Step : qint16 { SourceFormat = 1, Sources, OutputFormat, Settings, Other, Converting };

    // What the button of the last step says; its click goes by it.
    static inline const QString ConvertCaption = QStringLiteral("&Convert");
    static inline const QString StopCaption = QStringLiteral("&Stop");

    void addSteps();
    void attachHandlers();
    void allowExtendedFormats();

    // The steps
    void ShowStep();
    StepFrame *frameOfStep() const;
    void enterConverting();
    bool leaveStep();
    void cmdNext_Click();
    void cmdLast_Click();
    void cmdQuit_Click();
    void cmdHelp_Click();
    void cmdAbout_Click();

    // The job
    void startConverting();
    void stopConverting();
    void ConvertAllFiles();
    void convertUnlessKept(const QString &source, const QString &destination);
    bool mayOverwrite();
    void finishJob();
    void ConvertOneFile(const QString &source, const QString &destination);
    void pumpSamples();
    QString MakeOutputFileName(const QString &file) const;
    void UpdateProgress(double percent);
    void UpdateStatusLabels();
    void tmUsed_Timer();

    const std::unique_ptr<NCTAudioFile> FileR;
    const std::unique_ptr<NCTAudioFile> FileW;
    const Skin Skin1{};
    FormSlot<frmAbout1> m_about;
    QTimer *const tmUsed;

    // The steps
    frmSrcFmt *m_source;
    frmSource *m_sources;
    frmOutFmt *m_output;
    std::array<FormatPage *, 4> m_settings; ///< by the format code minus 1
    frmWMASet *m_wma;                       ///< one of these
    frmOtherSet *m_other;
    frmConvert *m_converting;

    qint16 m_nStep = SourceFormat;
    qint16 m_nSourceFormat = 0; ///< a format code; set on leaving the first step
    qint16 m_nOutputFormat = 0; ///< a format code; set on leaving the third step
    bool m_bConverting = false;
    bool m_jobRuns = false; ///< until the click that started the job returns, though it may be stopped
    ConvertStatus m_Status;
};
