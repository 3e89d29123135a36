#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// A value as the system's registry holds it.
struct RegistryValue
{
    enum Type { String = 1, DoubleWord = 4 };

    int type = String;
    QByteArray bytes; ///< a string's may end in a NUL; a double word's are four, the lowest first
};

/// The system's registry, which is only read.
class Registry
{
public:
    static constexpr quint32 LocalMachine = 0x80000002;

    virtual ~Registry() = default;

    /// Nothing where the key or the value isn't there or can't be read; a system without a registry has none
    /// of them. `key` is the path below the root, with "\" between its parts.
    virtual std::optional<RegistryValue> value(quint32 root, const QString &key,
                                               const QString &name) const = 0;
};
