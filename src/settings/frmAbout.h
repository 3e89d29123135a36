#pragma once

#include "platform/Form.h"
#include "ui_frmAbout.h"

#include <QDialog>

/// The about box.
class frmAbout : public FormOf<QDialog>, private Ui::frmAbout
{
    Q_OBJECT

public:
    /// `windowsVersionName` is the system's name as the start-up found it.
    frmAbout(const Desktop &desktop, const QString &windowsVersionName);

    /// Runs the system's information tool, or tells that there is none.
    void StartSysInfo();

private:
    void lblInternet_Click();
    void lblSupport_Click();
};
