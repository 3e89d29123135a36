#pragma once

#include "base/RunTimeFailure.h"
#include "files/ByteSink.h"

#include <QByteArray>
#include <algorithm>
#include <limits>

namespace testkit {

/// A file in memory, on a disk of limited room, of which the first `kept` bytes can be looked at.
class MemorySink final : public files::ByteSink
{
public:
    static constexpr qint64 Endless = std::numeric_limits<qint64>::max();

    explicit MemorySink(qint64 room = Endless, qint64 kept = Endless) : m_room(room), m_kept(kept) {}

    void write(const std::uint8_t *bytes, std::size_t count) override
    {
        if (m_position + qint64(count) > m_room)
            throw RunTimeFailure(RunTimeFailure::DiskFull);
        const qint64 end = std::min(m_position + qint64(count), m_kept);
        if (end > m_content.size())
            m_content.resize(end);
        if (end > m_position)
            std::copy_n(reinterpret_cast<const char *>(bytes), end - m_position,
                        m_content.data() + m_position);
        m_position += qint64(count);
    }

    void seek(std::int64_t position) override { m_position = position; }

    const QByteArray &content() const { return m_content; }

private:
    const qint64 m_room;
    const qint64 m_kept;
    QByteArray m_content;
    qint64 m_position = 0;
};

} // namespace testkit
