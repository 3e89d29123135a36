#pragma once

#include "base/Text.h"

class Dialogs;
class QWidget;
class RunTimeFailure;

/// Makes each missing level of a folder path. The first failure ends it with a box; levels made before stay.
void CreateDirectoryPath(Dialogs &dialogs, QWidget *owner, const QString &path,
                         QChar separator = PathSeparator);

/// The folder that the user picks, with a closing separator for a root only; empty on a cancel or a failure.
QString BrowseForFolder(Dialogs &dialogs, QWidget *owner);

/// The error report box for a failure at a place of the program.
void ShowErrorReport(Dialogs &dialogs, QWidget *owner, const QString &place, const RunTimeFailure &failure);
