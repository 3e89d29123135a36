#include "converter/frmWMASet.h"

#include "base/Deployment.h"
#include "controls/HandCursor.h"
#include "converter/WmaProfiles.h"
#include "platform/Shell.h"

using WmaProfiles::WMAProfileDescriptions;

frmWMASet::frmWMASet(Form &form) : FormatPage(form)
{
    setupUi(this);
    attachClick(cboWMASettings, [this] { ShowWMADescription(); });
    const auto link = [this](LinkText *text, const QString &address) {
        SetHandCursor(text);
        attach(text, &LinkText::clicked, [this, address] { desktop().shell.open(address); });
        attach(text, &LinkText::gotFocus, [this] { Q_EMIT linkFocused(); });
    };
    link(txtWMF9, Deployment::WmfDistAddress);
    link(txtWMF7, Deployment::WmfDist7Address);
}

void frmWMASet::LoadWMAProfiles(NCTAudioFile &file)
{
    cboWMASettings->clearEntries();
    for (qint32 profile = 1; profile <= WMAProfileDescriptions.size(); ++profile) {
        file.SelectWMAProfile(profile);
        cboWMASettings->addEntry(QString::number(profile) + QStringLiteral(" - ") + file.FormatString(),
                                 profile);
    }
    cboWMASettings->setListIndex(WmaProfiles::PresetRow);
}

void frmWMASet::ShowWMADescription()
{
    skinDesc->setText(QStringLiteral("Choosed:\n") + cboWMASettings->currentText() +
                      QStringLiteral("\n\nDescription:\n") +
                      WMAProfileDescriptions.value(cboWMASettings->listIndex()));
}

bool frmWMASet::apply(NCTAudioFile &writer)
{
    writer.SelectWMAProfile(cboWMASettings->listIndex() + 1);
    return true;
}
