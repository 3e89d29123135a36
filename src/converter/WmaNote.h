#pragma once

#include "base/Deployment.h"

/// What both steps that ask for a format say of WMA.
inline QString wmaNote()
{
    return QStringLiteral("If you need to convert WMA format, please download WMFdist.exe from ") +
           Deployment::WmfDistAddress + QStringLiteral(" and install it to you computer");
}
