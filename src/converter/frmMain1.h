#pragma once

#include "components/NCTAudioFile.h"
#include "converter/ConvertStatus.h"
#include "converter/Skin.h"
#include "converter/frmAbout1.h"
#include "platform/Dialogs.h"
#include "platform/Form.h"
#include "ui_frmMain1.h"

#include <QSet>
#include <QTimer>

class StepFrame;

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

    void attachHandlers();

    // The steps
    void ShowStep();
    void HideFrame(QWidget *frame);
    StepFrame *frameOfStep() const;
    void enterConverting();
    bool leaveStep();
    bool leaveSettings();
    bool refuse(const QString &text, BoxIcon icon);
    void cmdNext_Click();
    void cmdLast_Click();
    void cmdQuit_Click();
    void cmdHelp_Click();
    void cmdAbout_Click();
    void cmdFolder_Click();
    void rdSrcMP3_Click();
    void rdSrcWAV_Click();

    // The list of sources
    void cmdAdd_Click();
    void cmdRemove_Click();
    void cmdClearAll_Click();
    void lstFile_PathsDropped(const QStringList &paths);
    bool IsFileInList(const QString &path) const;
    void addSources(const QStringList &paths);

    // The format pages
    void SetValues();
    void ApplyMP3Format();
    void ApplyWAVFormat();
    void ApplyWMAFormat();
    void ApplyOGGFormat();
    bool IsOGGFormatValid() const;
    struct OggValues;
    OggValues oggValues() const;
    void chMP3VBR_Click();
    void chkOGGEncoder_Click();
    void chkOGGVBREnabled_Click();
    void hsMP3CBRQuality_Change();
    void hsMP3VBRQuality_Change();
    void hsOGGVBRQuality_Change();
    void LoadWMAProfiles();
    void ShowWMADescription();
    void txtWMF9_Click();
    void txtWMF9_GotFocus();
    void txtWMF7_Click();
    void txtWMF7_GotFocus();

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
    NCTMP3Options *m_objMP3Options = nullptr; ///< the writer's
    const Skin Skin1{};
    FormSlot<frmAbout1> m_about;
    QTimer *const tmUsed;

    qint16 m_nStep = SourceFormat;
    qint16 m_nSourceFormat = 0; ///< a format code; set on leaving the first step
    qint16 m_nOutputFormat = 0; ///< a format code; set on leaving the third step
    bool m_bConverting = false;
    QSet<QString> m_paths;  ///< the rows of the list
    bool m_jobRuns = false; ///< until the click that started the job returns, though it may be stopped
    ConvertStatus m_Status;
};
