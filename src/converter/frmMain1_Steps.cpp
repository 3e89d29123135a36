#include "base/Formats.h"
#include "base/Text.h"
#include "converter/frmMain1.h"
#include "settings/Folders.h"
#include "settings/HelpPages.h"

namespace {

const QString NextCaption = QStringLiteral("&Next >>");

} // namespace

void frmMain1::HideFrame(QWidget *frame)
{
    frame->hide();
    frame->move(frmSrcFmt->pos());
}

StepFrame *frmMain1::frameOfStep() const
{
    switch (m_nStep) {
    case SourceFormat:
        return frmSrcFmt;
    case Sources:
        return frmSource;
    case OutputFormat:
        return frmOutFmt;
    case Settings: {
        const std::array pages = {frmMP3Set, frmWAVSet, frmWMASet, frmOggSet};
        return pages[m_nOutputFormat - 1];
    }
    case Other:
        return frmOtherSet;
    default:
        return frmConvert;
    }
}

void frmMain1::ShowStep()
{
    for (QWidget *frame : {frmSource, frmSrcFmt, frmOutFmt, frmWMASet, frmWAVSet, frmMP3Set, frmOggSet,
                           frmOtherSet, frmConvert})
        HideFrame(frame);
    StepFrame *const frame = frameOfStep();
    frames->setCurrentWidget(frame);
    frame->show();
    stepTrail->setStep(m_nStep);
    setWindowTitle(ConverterName + QStringLiteral(" - ") + frame->title());
    switch (m_nStep) {
    case SourceFormat:
        cmdLast->setEnabled(false);
        cmdNext->setEnabled(true);
        break;
    case Sources:
        cmdLast->setEnabled(true);
        cmdNext->setEnabled(lstFile->count() > 0);
        break;
    case OutputFormat:
    case Settings:
        cmdNext->setEnabled(true);
        break;
    case Other:
        cmdNext->setText(NextCaption);
        cmdNext->repaint();
        break;
    case Converting:
        enterConverting();
        break;
    }
    // Hiding and disabling hand the focus to whatever comes next, which may be the button that quits.
    if (focusWidget() != cmdLast)
        (cmdNext->isEnabled() ? cmdNext : cmdAdd)->setFocus();
}

void frmMain1::cmdNext_Click()
{
    if (m_nStep == Converting) {
        if (cmdNext->text() == StopCaption)
            stopConverting();
        else
            startConverting();
    } else if (leaveStep()) {
        ++m_nStep;
        ShowStep();
    }
}

/// Takes over what was chosen on the step. False holds the user on it.
bool frmMain1::leaveStep()
{
    const auto chosen = [](std::array<OptionButton *, 4> buttons, qint16 before) {
        for (qint16 code = 1; code <= 4; ++code) {
            if (buttons[code - 1]->isSelected())
                return code;
        }
        return before;
    };
    switch (m_nStep) {
    case SourceFormat:
        m_nSourceFormat = chosen({rdSrcMP3, rdSrcWAV, rdSrcWMA, rdSrcOGG}, m_nSourceFormat);
        return true;
    case Sources:
        return lstFile->count() > 0 ||
               refuse(QStringLiteral("Please add source files for converting"), BoxIcon::Information);
    case OutputFormat:
        m_nOutputFormat = chosen({rdDesMP3, rdDesWAV, rdDesWMA, rdDesOGG}, m_nOutputFormat);
        return true;
    case Settings:
        return leaveSettings();
    default:
        CreateDirectoryPath(desktop().dialogs, this, txtFolder->text());
        return true;
    }
}

bool frmMain1::leaveSettings()
{
    switch (m_nOutputFormat) {
    case ConvertMP3:
        ApplyMP3Format();
        return true;
    case ConvertWAV:
        ApplyWAVFormat();
        return !trimBlanks(FileW->FormatString()).isEmpty() ||
               refuse(QStringLiteral("The WAV settings is not valid, please reset it to continue!"),
                      BoxIcon::Critical);
    case ConvertWMA:
        ApplyWMAFormat();
        return true;
    default:
        if (!IsOGGFormatValid())
            return refuse(
                QStringLiteral("The OGG Vorbis settings is not valid, please reset it to continue!"),
                BoxIcon::Critical);
        ApplyOGGFormat();
        return true;
    }
}

/// Always false.
bool frmMain1::refuse(const QString &text, BoxIcon icon)
{
    desktop().dialogs.messageBox(this, {.text = text, .icon = icon});
    return false;
}

void frmMain1::cmdLast_Click()
{
    // A stopped job has not yet left its loop: nothing may change under it.
    if (m_jobRuns)
        return;
    if (m_nStep < Sources) {
        cmdLast->setEnabled(false);
    } else {
        --m_nStep;
        ShowStep();
    }
}

void frmMain1::cmdQuit_Click()
{
    unload();
}

void frmMain1::cmdHelp_Click()
{
    openHelp(desktop());
}

void frmMain1::cmdAbout_Click()
{
    m_about.form()->showModal(this);
}

void frmMain1::cmdFolder_Click()
{
    const QString folder = trimBlanks(BrowseForFolder(desktop().dialogs, this));
    if (!folder.isEmpty())
        txtFolder->setText(folder);
}

void frmMain1::rdSrcMP3_Click()
{
    rdDesWAV->select();
}

void frmMain1::rdSrcWAV_Click()
{
    rdDesMP3->select();
}
