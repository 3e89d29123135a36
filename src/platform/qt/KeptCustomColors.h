#pragma once

#include <QColor>
#include <QList>

/// Sets the custom colours of the colour dialog back at its end. All Qt programs of a user share them, and
/// nothing of ours is remembered there.
class KeptCustomColors
{
public:
    KeptCustomColors();
    ~KeptCustomColors();
    KeptCustomColors(const KeptCustomColors &) = delete;
    KeptCustomColors &operator=(const KeptCustomColors &) = delete;

private:
    QList<QColor> m_colors;
};
