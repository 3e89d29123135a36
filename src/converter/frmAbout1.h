#pragma once

#include "converter/Skin.h"
#include "platform/Form.h"
#include "ui_frmAbout1.h"

/// The name of the converter in its captions.
inline const QString ConverterName = QStringLiteral("Audio Converter for Tonelift");

/// The converter's about box.
class frmAbout1 : public FormOf<QDialog>, private Ui::frmAbout1
{
    Q_OBJECT

public:
    /// `skin` is the converter's.
    frmAbout1(const Desktop &desktop, const Skin &skin);

protected:
    void Form_Load() override;

private:
    void txtWebsite_Click();
    void txtWebsite_GotFocus();
    void txtSupport_Click();
    void txtSupport_GotFocus();
    void OKButton_Click();

    const Skin Skin1;
};
