#include "settings/frmAbout.h"

#include "base/Deployment.h"
#include "base/Text.h"
#include "controls/HandCursor.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "settings/SystemInformation.h"

#include <QApplication>

frmAbout::frmAbout(const Desktop &desktop, const QString &windowsVersionName) : FormOf(desktop)
{
    setupUi(this);
    setCancelButton(cmdOK);
    setWindowTitle(QStringLiteral("About ") + ProductName);
    lblTitle->setText(ProductName);
    lblVersion->setText(QStringLiteral("Version ") + Deployment::ProductVersion);
    lblInternet->setText(Deployment::WebAddress);
    lblSupport->setText(Deployment::SupportAddress);
    LabelSys->setText(windowsVersionName);
    const QIcon icon = QApplication::windowIcon();
    picIcon->setPixmap(icon.pixmap(QSize(64, 64), devicePixelRatioF()));
    picIcon->setVisible(!icon.isNull());
    QFont large = lblTitle->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    lblTitle->setFont(large);
    SetHandCursor(lblInternet);
    SetHandCursor(lblSupport);
    attach(lblInternet, &LinkLabel::clicked, [this] { lblInternet_Click(); });
    attach(lblSupport, &LinkLabel::clicked, [this] { lblSupport_Click(); });
    attach(cmdOK, &QPushButton::clicked, [this] { unload(); });
    attach(cmdSysInfo, &QPushButton::clicked, [this] { StartSysInfo(); });
    centerOnScreen();
}

void frmAbout::StartSysInfo()
{
    if (!startSystemInformation(desktop().registry, desktop().shell))
        desktop().dialogs.messageBox(
            this, {.text = QStringLiteral("System Information Is Unavailable At This Time"),
                   .icon = BoxIcon::None});
}

void frmAbout::lblInternet_Click()
{
    desktop().shell.open(Deployment::WebAddress);
}

void frmAbout::lblSupport_Click()
{
    desktop().shell.open(QStringLiteral("mailto:") + Deployment::SupportAddress);
}
