// The second pass of a VQF job: the ripped WAV files, one after the other, become VQF files.
#include "base/Formats.h"
#include "base/Text.h"
#include "components/VEnc.h"
#include "naming/Paths.h"
#include "platform/Dialogs.h"
#include "rip/RipHost.h"
#include "rip/frmExtract.h"

#include <QFile>
#include <algorithm>

namespace {

constexpr qint16 VqfBitRate = 96; // kb/s

void deleteFile(const QString &path)
{
    if (!QFile::exists(path))
        throw RunTimeFailure(RunTimeFailure::FileNotFound);
    if (!QFile::remove(path))
        throw RunTimeFailure(RunTimeFailure::PathFileAccessError);
}

} // namespace

void frmExtract::StartVqfPass()
{
    if (m_sVqfList.isEmpty())
        return;
    m_asVqfFiles = splitText(m_sVqfList, VqfListSeparator);
    m_iVqfIndex = 0;
    m_iVqfCount = static_cast<qint16>(m_asVqfFiles.size());
    setWindowTitle(QStringLiteral("Converting temporary WAV File(s) to VQF File(s), please wait ..."));
    prgTrack->setValue(0);
    showTrackPercent(0);
    showFilesDone(0); // of the checked rows, data tracks among them
    setVqfFiles();
    VEnc1->setVqfBitRate(VqfBitRate);
    VEnc1->VqfEncode();
}

void frmExtract::setVqfFiles()
{
    const QString &input = m_asVqfFiles[m_iVqfIndex];
    VEnc1->setVqfInputFile(input);
    QString output = input;
    QString from = Formats::ofJob(EncVQF).rippedExtension;
    QString to = Formats::ofJob(EncVQF).extension;
    VEnc1->setVqfOutputFile(FileExtChange(output, from, to));
}

void frmExtract::VqfProgress(qint32 percent)
{
    const int shown = std::min(percent, 100);
    prgTrack->setValue(shown);
    showTrackPercent(shown);
    if (shown == 100)
        finishVqfFile();
}

/// The pass ends here; the window stays open for its reader.
void frmExtract::VqfFailed(const QString &reason)
{
    addToStatus(
        QStringLiteral("%1 can't be converted: %2.").arg(ExtractFile(m_asVqfFiles[m_iVqfIndex]), reason));
}

void frmExtract::finishVqfFile()
{
    showFilesDone(prgTotal->value() + 1);
    prgTrack->setValue(0);
    deleteFile(m_asVqfFiles[m_iVqfIndex]);
    ++m_iVqfIndex;
    if (m_iVqfIndex == m_iVqfCount) {
        const QString completed = QStringLiteral("Audio CD Ripping Completed!");
        desktop().dialogs.messageBox(this, {.text = completed, .title = completed});
        m_parts.host.cmdIE_Click(); // here whatever the settings say
        unload();
        return;
    }
    setVqfFiles();
    VEnc1->VqfEncode();
}
