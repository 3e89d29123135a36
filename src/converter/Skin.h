#pragma once

class QWidget;

/// The look of the converter's windows. It takes its colours from the desktop's theme.
class Skin
{
public:
    void ApplySkin(QWidget *window) const;
};
