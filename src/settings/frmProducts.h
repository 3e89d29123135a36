#pragma once

#include "platform/Form.h"
#include "ui_frmProducts.h"

#include <QDialog>

/// The list of the related links, each as its name and its address; a click opens the address.
class frmProducts : public FormOf<QDialog>, private Ui::frmProducts
{
    Q_OBJECT

public:
    explicit frmProducts(const Desktop &desktop);
};
