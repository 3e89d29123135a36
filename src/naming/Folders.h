#pragma once

#include "base/Text.h"

/// Makes each missing level of a folder path; false where one can't be made. Levels made before stay.
bool makeFolders(const QString &path, QChar separator = PathSeparator);
