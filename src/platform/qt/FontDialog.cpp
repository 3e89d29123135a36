#include "platform/qt/FontDialog.h"

#include "base/ColorNumber.h"
#include "platform/qt/KeptCustomColors.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QPushButton>
#include <QVBoxLayout>

FontDialog::FontDialog(const FontChoice &choice, QWidget *parent)
    : QDialog(parent),
      m_fonts(new QFontDialog(choice.font)),
      m_colorButton(new QPushButton(tr("Text &Color..."))),
      m_color(choice.color)
{
    setWindowTitle(tr("Font"));
    m_fonts->setWindowFlags(Qt::Widget);
    m_fonts->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);
    m_colorButton->setObjectName(QStringLiteral("cmdTextColor"));
    m_colorButton->setAutoDefault(false);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->addButton(m_colorButton, QDialogButtonBox::ResetRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_fonts);
    layout->addWidget(buttons);
    // The fonts are a dialog of their own, which takes Return and Escape.
    connect(m_fonts, &QDialog::accepted, this, &QDialog::accept);
    connect(m_fonts, &QDialog::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_colorButton, &QPushButton::clicked, this, [this] {
        const KeptCustomColors kept;
        const QColor color = QColorDialog::getColor(colorFromNumber(m_color), this);
        if (color.isValid())
            m_color = colorNumber(color);
        showColor();
    });
    showColor();
}

FontChoice FontDialog::choice() const
{
    return {m_fonts->currentFont(), m_color};
}

void FontDialog::showColor()
{
    QPixmap swatch(16, 16);
    swatch.fill(colorFromNumber(m_color));
    m_colorButton->setIcon(swatch);
}
