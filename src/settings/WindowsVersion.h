#pragma once

#include <QString>

class SystemVersion;

/// The name that decides on the VBR clamp; never shown. Empty on a system other than Windows.
QString GetOSName(const SystemVersion &system);

/// The name that people read, and that decides on the notice for newer Windows versions. On another system it
/// is the name which that system gives itself.
QString GetWindowsVersionName(const SystemVersion &system);
