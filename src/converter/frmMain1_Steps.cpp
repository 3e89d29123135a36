#include "converter/frmConvert.h"
#include "converter/frmMain1.h"
#include "converter/frmOtherSet.h"
#include "converter/frmSource.h"
#include "converter/frmSrcFmt.h"
#include "converter/frmWMASet.h"
#include "settings/Folders.h"
#include "settings/HelpPages.h"

namespace {

const QString NextCaption = QStringLiteral("&Next >>");

} // namespace

StepFrame *frmMain1::frameOfStep() const
{
    switch (m_nStep) {
    case SourceFormat:
        return m_source;
    case Sources:
        return m_sources;
    case OutputFormat:
        return m_output;
    case Settings:
        return m_settings[m_nOutputFormat - 1];
    case Other:
        return m_other;
    default:
        return m_converting;
    }
}

void frmMain1::ShowStep()
{
    for (int index = 0; index < frames->count(); ++index)
        frames->widget(index)->hide();
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
        cmdNext->setEnabled(m_sources->count() > 0);
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
        cmdNext->isEnabled() ? cmdNext->setFocus() : m_sources->focusAdd();
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
    switch (m_nStep) {
    case SourceFormat:
        m_nSourceFormat = m_source->chosen(m_nSourceFormat);
        m_sources->setFormat(m_nSourceFormat);
        return true;
    case Sources:
        if (m_sources->count() == 0)
            desktop().dialogs.messageBox(this,
                                         {.text = QStringLiteral("Please add source files for converting")});
        return m_sources->count() > 0;
    case OutputFormat:
        m_nOutputFormat = m_output->chosen(m_nOutputFormat);
        return true;
    case Settings:
        return m_settings[m_nOutputFormat - 1]->apply(*FileW);
    default:
        CreateDirectoryPath(desktop().dialogs, this, m_other->folder());
        return true;
    }
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
