#pragma once

#include <QStringList>

class QDropEvent;
class QMimeData;

/// Files and folders that other programs drop on a window.

/// The paths on this machine, in the platform's form.
QStringList localPaths(const QMimeData *data);
/// Takes an event that brings such paths, and refuses any other one.
void acceptPaths(QDropEvent *event);
/// All files below a folder whose names end in one of the endings, in any letter case, in order of their
/// paths. Links to folders aren't followed.
QStringList filesBelow(const QString &folder, const QStringList &endings);
