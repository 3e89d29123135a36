#pragma once

#include <QColor>

/// A colour number is 0x00BBGGRR, the form in which settings and pickers hold colours.
inline qint32 colorNumber(const QColor &color)
{
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

inline QColor colorFromNumber(qint32 number)
{
    return QColor(number & 0xff, (number >> 8) & 0xff, (number >> 16) & 0xff);
}
