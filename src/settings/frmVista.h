#pragma once

#include "platform/Form.h"
#include "settings/SettingsStore.h"
#include "ui_frmVista.h"

#include <QDialog>

/// The notice for newer Windows versions. Its tick starts empty at each opening, and every way of closing
/// stores it.
class frmVista : public FormOf<QDialog>, private Ui::frmVista
{
    Q_OBJECT

public:
    explicit frmVista(const Desktop &desktop);

protected:
    void Form_Unload() override;

private:
    SettingsStore m_store;
};
