#pragma once

#include <QString>

class Registry;
class Shell;

/// The value `SubKeyRef` of a registry key as text. Where it can't be read `KeyVal` is emptied and the answer
/// is no; a value that is neither a string nor a double word leaves `KeyVal` as it is.
bool GetKeyValue(const Registry &registry, quint32 KeyRoot, const QString &KeyName, const QString &SubKeyRef,
                 QString &KeyVal);

/// Starts the system's information tool: the one that the registry names, or the first of the desktops' own
/// that is installed. No where there is none, or where it doesn't start.
bool startSystemInformation(const Registry &registry, Shell &shell);
