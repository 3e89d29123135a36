#pragma once

#include "platform/Dialogs.h"

#include <QDialog>

class QFontDialog;
class QPushButton;

/// Qt's font dialog with a button for the text colour beside it.
class FontDialog : public QDialog
{
    Q_OBJECT

public:
    FontDialog(const FontChoice &choice, QWidget *parent);

    FontChoice choice() const;

private:
    void showColor();

    QFontDialog *m_fonts;
    QPushButton *m_colorButton;
    qint32 m_color;
};
