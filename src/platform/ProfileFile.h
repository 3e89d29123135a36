#pragma once

#include <QString>
#include <optional>

/// Profile files: lines "[section]" and "key=value", 8-bit text, read and written as UTF-8.
///
/// Names are found without regard to letter case and blanks around them; of two equal sections or keys the
/// first one counts. Comments (";"), lines of no meaning, bytes of no known character and the order of all
/// lines stay as they are. Every call opens the file anew. Nothing here fails: reading gives the default,
/// writing false.
namespace ProfileFile {

/// The value without the blanks around it and without one pair of matching quotes round it; `defaultValue`
/// where section or key is missing.
QString value(const QString &section, const QString &key, const QString &defaultValue, const QString &file);

/// Sets the value; removes the key where there is no value. File and section come into being as needed. The
/// file is replaced as a whole under a lock, so that neither a crash nor a second copy of the program loses
/// anything of it.
bool setValue(const QString &section, const QString &key, const std::optional<QString> &value,
              const QString &file);

bool removeSection(const QString &section, const QString &file);

} // namespace ProfileFile
