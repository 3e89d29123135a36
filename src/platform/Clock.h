#pragma once

#include <QDateTime>

/// The present date and time.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};
