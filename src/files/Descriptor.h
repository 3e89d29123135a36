#pragma once

#include <QFile>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace files {

/// An open file of the system, closed with this object.
class Descriptor
{
public:
    Descriptor() = default;
    /// Not open where that fails; `errno` tells why.
    Descriptor(const QString &path, int flags, mode_t mode = 0)
        : m_number(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, mode))
    {}
    ~Descriptor()
    {
        if (isOpen())
            ::close(m_number);
    }
    Descriptor(Descriptor &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }

private:
    int m_number = -1;
};

} // namespace files
