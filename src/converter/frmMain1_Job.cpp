#include "base/Formats.h"
#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "converter/OutputNames.h"
#include "converter/Progress.h"
#include "converter/frmConvert.h"
#include "converter/frmMain1.h"
#include "converter/frmOtherSet.h"
#include "converter/frmSource.h"
#include "naming/Paths.h"
#include "platform/EventPump.h"
#include "platform/ProgramEnd.h"
#include "platform/Shell.h"
#include "settings/Folders.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <algorithm>
#include <filesystem>

namespace {

bool isSameFile(const QString &one, const QString &other)
{
    // By what the names lead to: on some disks names of other letter cases do so, too.
    const auto place = [](const QString &path) {
        return std::filesystem::path(QFile::encodeName(path).toStdString());
    };
    std::error_code failure;
    return std::filesystem::equivalent(place(one), place(other), failure);
}

} // namespace

void frmMain1::enterConverting()
{
    cmdNext->setText(ConvertCaption);
    cmdNext->repaint();
    m_Status.ConvertedFiles = 0;
    m_Status.TotalFiles = static_cast<qint16>(m_sources->count());
    m_Status.DestinationFile.clear();
    m_Status.ConvertingFile.clear();
    m_Status.OutputFormat = Formats::ofConverter(m_nOutputFormat).name;
    m_Status.OutputFormatString = FileW->FormatString();
    m_Status.OutputFolder = m_other->folder();
    m_Status.InputFormat = Formats::ofConverter(m_nSourceFormat).name;
    UpdateStatusLabels();
    UpdateProgress(0);
}

void frmMain1::startConverting()
{
    // A stopped job may still be on its way out of its loop.
    if (m_jobRuns)
        return;
    const QScopedValueRollback running(m_jobRuns, true);
    cmdLast->setEnabled(false);
    cmdNext->setText(StopCaption);
    desktop().pump.processEvents();
    if (isUnloaded() || cmdNext->text() != StopCaption) // closed or stopped before it began
        return;
    ConvertAllFiles();
    cmdNext->repaint();
}

void frmMain1::stopConverting()
{
    m_bConverting = false;
    tmUsed->stop();
    cmdNext->setText(ConvertCaption);
    cmdLast->setEnabled(true);
    desktop().dialogs.messageBox(this, {.text = QStringLiteral("Converting Stopped!")});
    cmdNext->repaint();
}

/// Whatever fails for one file is passed over: the next one is converted.
void frmMain1::ConvertAllFiles()
{
    if (m_sources->count() == 0) {
        desktop().dialogs.messageBox(
            this, {.text = QStringLiteral("No files in the list, please add files to convert!")});
        return;
    }
    CreateDirectoryPath(desktop().dialogs, this, m_other->folder());
    if (isUnloaded())
        return;
    tmUsed->start();
    m_Status.ElapsedSeconds = 0;
    m_bConverting = true;
    const int rows = m_sources->count();
    for (int row = 0; row < rows; ++row) {
        const QString source = m_sources->file(row);
        const QString destination = MakeOutputFileName(source);
        m_Status.ConvertedFiles = static_cast<qint16>(row);
        m_Status.FileNumber = static_cast<qint16>(row + 1);
        m_Status.TotalFiles = static_cast<qint16>(rows);
        m_Status.ConvertingFile = source;
        m_Status.DestinationFile = destination;
        m_Status.OutputFormat = Formats::ofConverter(m_nOutputFormat).name;
        m_Status.OutputFolder = m_other->folder();
        m_Status.InputFormat = Formats::ofConverter(m_nSourceFormat).name;
        UpdateStatusLabels();
        if (!m_bConverting)
            break;
        convertUnlessKept(source, destination);
        if (!m_bConverting)
            break;
        m_Status.ConvertedFiles = static_cast<qint16>(row + 1);
        UpdateStatusLabels();
    }
    cmdNext->setText(ConvertCaption);
    cmdLast->setEnabled(true);
    if (m_bConverting)
        finishJob();
}

/// A destination that exists is overwritten or left alone as the fifth step says.
void frmMain1::convertUnlessKept(const QString &source, const QString &destination)
{
    if (QFileInfo::exists(destination) && !mayOverwrite())
        return;
    SkipFailures()([&] { ConvertOneFile(source, destination); });
}

bool frmMain1::mayOverwrite()
{
    if (!m_other->asksBeforeOverwriting())
        return m_other->overwrites();
    const QString question =
        QStringLiteral("The following file is already existed, do you want to overwrite it?\n");
    return desktop().dialogs.messageBox(this, {.text = question,
                                               .icon = BoxIcon::Question,
                                               .buttons = BoxButtons::YesNo,
                                               .preset = BoxAnswer::No}) == BoxAnswer::Yes;
}

void frmMain1::finishJob()
{
    m_bConverting = false;
    tmUsed->stop();
    desktop().dialogs.messageBox(this, {.text = QStringLiteral("Converting Finished!!"),
                                        .title = QStringLiteral("Finished Converting!")});
    if (m_other->exploresFolder())
        desktop().shell.explore(m_other->folder());
    if (m_other->closesWindow())
        unload();
    if (m_other->endsProgram()) {
        desktop().end.end(0);
        desktop().end.unwindIfEnding();
    }
}

QString frmMain1::MakeOutputFileName(const QString &file) const
{
    return ::MakeOutputFileName(file, m_nOutputFormat, m_other->folder());
}

/// A failure leaves it at once, as does the closing of the window before the source was opened. A negative
/// status ends this file without a word.
void frmMain1::ConvertOneFile(const QString &source, const QString &destination)
{
    CreateDirectoryPath(desktop().dialogs, this, ExtractPath(destination));
    setCursor(Qt::WaitCursor);
    const auto release = qScopeGuard([this] { unsetCursor(); });
    UpdateProgress(0);
    if (isUnloaded())
        return;
    const auto closeSource = qScopeGuard([this] { FileR->CloseFile(); });
    FileR->OpenRead(source);
    if (FileR->Status() >= 0) {
        m_Status.InputFormat = FileR->FormatString();
        UpdateStatusLabels();
        FileW->OpenWrite(destination);
        if (FileW->Status() >= 0) {
            // A part that is of no use goes at once, and not with the window or the next file.
            auto drop = qScopeGuard([this] { FileW->DropFile(); });
            const qint32 channels = FileR->ChannelCount();
            FileW->SetInputFormat(FileR->SampleRate(), channels);
            pumpSamples();
            // The source itself gives way only to what was made of the whole of it.
            if (!isSameFile(source, destination) || (m_bConverting && FileR->Status() >= 0)) {
                drop.dismiss();
                FileW->CloseFile();
            }
        }
    }
}

/// Takes the audio across, in pieces of at most a second, until the source or the job ends.
void frmMain1::pumpSamples()
{
    const double rate = FileR->SampleRate();
    const qint32 blockSize = toInt32(rate * FileR->ChannelCount());
    double position = 0; // in seconds of the source
    for (;;) {
        const QList<qint16> buffer = FileR->ReadSamples(blockSize);
        if (buffer.isEmpty())
            break;
        FileW->WriteSamples(buffer);
        position += divide(static_cast<double>(buffer.size()), FileR->SamplesPerSecond());
        position = std::min<double>(position, FileR->DurationSeconds());
        UpdateProgress(divide(position * 100, FileR->DurationSeconds()));
        desktop().pump.processEvents();
        if (!m_bConverting)
            break;
    }
    if (m_bConverting)
        UpdateProgress(100.0);
}

/// `percent`: how much of the current file is done.
void frmMain1::UpdateProgress(double percent)
{
    m_converting->showProgress(percent,
                               Progress::ofJob(m_Status.ConvertedFiles, m_Status.TotalFiles, percent));
    desktop().pump.processEvents();
}

void frmMain1::UpdateStatusLabels()
{
    m_converting->showStatus(m_Status);
}

void frmMain1::tmUsed_Timer()
{
    ++m_Status.ElapsedSeconds;
    UpdateStatusLabels();
}
