#include "converter/frmAbout1.h"

#include "base/Deployment.h"
#include "base/Text.h"
#include "controls/HandCursor.h"
#include "platform/Shell.h"

frmAbout1::frmAbout1(const Desktop &desktop, const Skin &skin) : FormOf(desktop), Skin1(skin)
{
    setupUi(this);
    setCancelButton(OKButton);
    skinName->setFont(Skin::headline(skinName->font()));
    attach(txtWebsite, &LinkText::clicked, [this] { txtWebsite_Click(); });
    attach(txtWebsite, &LinkText::gotFocus, [this] { txtWebsite_GotFocus(); });
    attach(txtSupport, &LinkText::clicked, [this] { txtSupport_Click(); });
    attach(txtSupport, &LinkText::gotFocus, [this] { txtSupport_GotFocus(); });
    attach(OKButton, &QPushButton::clicked, [this] { OKButton_Click(); });
}

void frmAbout1::Form_Load()
{
    Skin1.ApplySkin(this);
    setWindowTitle(QStringLiteral("About ") + ConverterName + QStringLiteral(" ..."));
    skinName->setText(ConverterName);
    skinVer->setText(QStringLiteral("Version ") + Deployment::ProductVersion);
    skinDesc->setText(QStringLiteral("Convert MP3, WAV, WMA, OGG from one to another\n"
                                     "Resmaple MP3 to MP3, WAV to WAV, WMA to WMA, OGG to OGG"));
    txtWebsite->setText(Deployment::WebAddress);
    txtSupport->setText(Deployment::SupportAddress);
    SetHandCursor(txtWebsite);
    SetHandCursor(txtSupport);
}

void frmAbout1::txtWebsite_Click()
{
    desktop().shell.open(Deployment::WebAddress);
}

void frmAbout1::txtWebsite_GotFocus()
{
    OKButton->setFocus();
}

void frmAbout1::txtSupport_Click()
{
    desktop().shell.open(QStringLiteral("mailto:") + Deployment::SupportAddress);
}

void frmAbout1::txtSupport_GotFocus()
{
    OKButton->setFocus();
}

void frmAbout1::OKButton_Click()
{
    unload();
}
