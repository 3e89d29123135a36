#pragma once

#include "base/RunTimeFailure.h"
#include "engines/common/OutputFile.h"

#include <QByteArray>
#include <limits>

namespace testkit {

/// A file in memory, on a disk of limited room.
class MemorySink final : public engines::ByteSink
{
public:
    explicit MemorySink(qint64 room = std::numeric_limits<qint64>::max()) : m_room(room) {}

    void write(const std::uint8_t *bytes, std::size_t count) override
    {
        if (m_position + qint64(count) > m_room)
            throw RunTimeFailure(RunTimeFailure::DiskFull);
        const auto size = static_cast<qsizetype>(count);
        if (m_position + size > m_content.size())
            m_content.resize(m_position + size);
        std::copy_n(reinterpret_cast<const char *>(bytes), size, m_content.data() + m_position);
        m_position += size;
    }

    void seek(std::int64_t position) override { m_position = static_cast<qsizetype>(position); }

    const QByteArray &content() const { return m_content; }

private:
    const qint64 m_room;
    QByteArray m_content;
    qsizetype m_position = 0;
};

} // namespace testkit
