#include "base/Deployment.h"
#include "converter/WmaProfiles.h"
#include "converter/frmMain1.h"
#include "platform/Shell.h"

using WmaProfiles::WMAProfileDescriptions;

void frmMain1::LoadWMAProfiles()
{
    cboWMASettings->clearEntries();
    FileW->setExtendedFormats(true);
    FileR->setExtendedFormats(true);
    for (qint32 profile = 1; profile <= WMAProfileDescriptions.size(); ++profile) {
        FileR->SelectWMAProfile(profile);
        cboWMASettings->addEntry(QString::number(profile) + QStringLiteral(" - ") + FileR->FormatString(),
                                 profile);
    }
    cboWMASettings->setListIndex(WmaProfiles::PresetRow);
}

void frmMain1::ShowWMADescription()
{
    skinDesc->setText(QStringLiteral("Choosed:\n") + cboWMASettings->currentText() +
                      QStringLiteral("\n\nDescription:\n") +
                      WMAProfileDescriptions.value(cboWMASettings->listIndex()));
}

void frmMain1::ApplyWMAFormat()
{
    FileW->SelectWMAProfile(cboWMASettings->listIndex() + 1);
}

void frmMain1::txtWMF9_Click()
{
    desktop().shell.open(Deployment::WmfDistAddress);
}

void frmMain1::txtWMF9_GotFocus()
{
    cmdNext->setFocus();
}

void frmMain1::txtWMF7_Click()
{
    desktop().shell.open(Deployment::WmfDist7Address);
}

void frmMain1::txtWMF7_GotFocus()
{
    cmdNext->setFocus();
}
