#pragma once

#include <QString>
#include <QStringList>

/// Names of files out of what people type, plain text work without a look at the disk.

/// A typed file name made legal: the colon stays, the double quote goes.
QString MakeSafeFileName(const QString &name);
/// A track's title as file name: the double quote stays, the colon goes. `extension` (with its point) comes
/// behind it; a title of nothing gives nothing.
QString MakeTrackFileName(const QString &title, const QString &extension);

/// The first name of each pair of equal names, in order; case counts.
QStringList repeatedNames(const QStringList &names);
