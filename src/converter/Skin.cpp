#include "converter/Skin.h"

#include <QFile>
#include <QWidget>

/// Resources of a static library come into the program only when somebody asks for them.
static void initResources()
{
    Q_INIT_RESOURCE(converter);
}

void Skin::ApplySkin(QWidget *window) const
{
    initResources();
    QFile sheet(QStringLiteral(":/converter/skin.qss"));
    const bool there = sheet.open(QIODevice::ReadOnly);
    Q_ASSERT(there);
    Q_UNUSED(there)
    window->setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

QFont Skin::headline(QFont font)
{
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    return font;
}
