#pragma once

#include <QFont>

class QWidget;

/// The look of the converter's windows. It takes its colours from the desktop's theme.
class Skin
{
public:
    void ApplySkin(QWidget *window) const;
    /// The font of headlines, as it grows out of the ordinary one.
    static QFont headline(QFont font);
};
