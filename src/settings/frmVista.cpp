#include "settings/frmVista.h"

#include "base/Deployment.h"
#include "base/Numbers.h"
#include "settings/SettingsKeys.h"

namespace {

QString noticeText()
{
    const QStringList lines = {
        QStringLiteral("It seems that you are using a Windows Vista or higher "),
        QStringLiteral("version system. If you meet any problems using under this "),
        QStringLiteral("operating system, please try the below steps:"),
        QString(),
        QStringLiteral("1, Uninstall this software from your PC"),
        QString(),
        QStringLiteral("2, Restart your PC and login as administrator"),
        QString(),
        QStringLiteral("3, Download the newest version from "),
        QStringLiteral("   ") + Deployment::InstallerAddress,
        QStringLiteral("   after download, set the EXE file's compatiblity "),
        QStringLiteral("   to \"Windows XP\" and check \"run this as an administrator\""),
        QString(),
        QStringLiteral("4, Create a folder on your PC manually \"c:\\tonelift\\\""),
        QStringLiteral("   or \"d:\\tonelift\\\" or something like this."),
        QString(),
        QStringLiteral("5. Install the software to the folder you created."),
        QString(),
        QStringLiteral("6. Enter \"c:\\tonelift\\\" and set the EXE file's compatibility "),
        QStringLiteral("   to \"Windows XP\" and check \"run this as an administrator\""),
        QString(),
        QStringLiteral("7) Insert your CD into CD-ROM, then launch Tonelift, "),
        QStringLiteral("   select device from the drop-down list, you will see all "),
        QStringLiteral("   tracks are listed in the window."),
    };
    return lines.join(u'\n');
}

} // namespace

frmVista::frmVista(const Desktop &desktop) : FormOf(desktop), m_store(desktop.paths)
{
    setupUi(this);
    setCancelButton(OKButton);
    Text1->setPlainText(noticeText());
    const QFontMetrics metrics(Text1->font());
    Text1->setMinimumSize(metrics.averageCharWidth() * 66, metrics.lineSpacing() * 16);
    attach(OKButton, &QPushButton::clicked, [this] { unload(); });
    centerOnScreen();
}

void frmVista::Form_Unload()
{
    m_store.write(Ini::IKnow, yesNoText(chkIKNow->isTicked()));
}
