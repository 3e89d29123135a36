#pragma once

#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "components/NCTAudioFile.h"
#include "testkit/CallLog.h"

#include <QMap>
#include <algorithm>
#include <functional>

/// A double of the audio file component. Each call goes into the log under the instance's name:
/// "FileW.SetInputFormat(44100, 2)", "FileW.MP3.CBRBitRate = 128", and with its answer "FileR.Status -> 0".
/// `refused` holds the calls that raise failure 5: a whole one as it stands in the log (without an answer) or
/// a name, "FileR.ReadSamples".
class FakeNCTAudioFile : public NCTAudioFile, private NCTMP3Options
{
public:
    FakeNCTAudioFile(CallLog &log, const QString &name) : m_log(log), m_name(name) {}

    struct Source
    {
        qint32 rate = 44100;
        qint32 channels = 2;
        qint64 frames = 44100;
        qint32 seconds = 1;   ///< what `DurationSeconds` says, whatever the frames are
        bool damaged = false; ///< which is known at its end
    };

    QStringList refused;
    QMap<QString, Source> sources;      ///< what `OpenRead` opens; other paths give a negative `Status`
    QStringList unwritable;             ///< paths for which `OpenWrite` gives a negative `Status`
    QStringList impossible;             ///< `SetWAVFormat` calls that leave an empty `FormatString`
    QMap<int, QString> profileNames;    ///< for `FormatString` behind `SelectWMAProfile`; else "Profile n"
    bool oggPossible = true;            ///< the answer of `CheckOGGFormat`
    QMap<QString, qint64> written;      ///< values per path, of the files that were closed
    std::function<bool()> whileReading; ///< what was set
    std::function<void(const QString &call)> during; ///< happens inside a call, behind its entry in the log

    void OpenRead(const QString &path) override
    {
        begin(QStringLiteral("OpenRead"), {path});
        m_open = sources.contains(path);
        m_status = m_open ? 0 : -1;
        m_source = sources.value(path);
        m_left = m_source.frames * m_source.channels;
        m_format = m_open ? QStringLiteral("Format of ") + path : QString();
    }

    void DropFile() override { begin(QStringLiteral("DropFile"), {}); }
    void CloseFile() override
    {
        begin(QStringLiteral("CloseFile"), {});
        if (!m_target.isEmpty())
            written[m_target] = m_values;
        m_target.clear();
        m_open = false;
    }

    void OpenWrite(const QString &path) override
    {
        begin(QStringLiteral("OpenWrite"), {path});
        m_status = unwritable.contains(path) ? -1 : 0;
        m_target = m_status == 0 ? path : QString();
        m_values = 0;
    }

    void WriteSamples(const QList<qint16> &samples) override
    {
        begin(QStringLiteral("WriteSamples"), {QString::number(samples.size())});
        if (m_target.isEmpty())
            throw RunTimeFailure(RunTimeFailure::InvalidCall);
        m_values += samples.size();
    }

    QList<qint16> ReadSamples(qint32 count) override
    {
        begin(QStringLiteral("ReadSamples"), {QString::number(count)});
        if (!m_open)
            throw RunTimeFailure(RunTimeFailure::InvalidCall);
        const qint64 given = std::min<qint64>(count, m_left);
        if (given == 0 && m_source.damaged)
            m_status = -1;
        m_left -= given;
        return QList<qint16>(given);
    }

    qint32 DurationSeconds() const override
    {
        return answer(QStringLiteral("DurationSeconds"), m_source.seconds);
    }
    qint32 SamplesPerSecond() const override
    {
        return answer(QStringLiteral("SamplesPerSecond"), m_source.rate * m_source.channels);
    }
    QString FormatString() const override
    {
        begin(QStringLiteral("FormatString"), {}, m_format);
        return m_format;
    }
    qint32 Status() const override { return answer(QStringLiteral("Status"), m_status); }
    qint32 ChannelCount() const override { return answer(QStringLiteral("ChannelCount"), m_source.channels); }
    qint32 SampleRate() const override { return answer(QStringLiteral("SampleRate"), m_source.rate); }

    void SetWAVFormat(qint32 rate, qint32 channels, qint32 bitsPerSample) override
    {
        const QString call = begin(QStringLiteral("SetWAVFormat"), texts(rate, channels, bitsPerSample));
        m_format = impossible.contains(call) ? QString() : call;
    }
    void SetInputFormat(qint32 rate, qint32 channels) override
    {
        begin(QStringLiteral("SetInputFormat"), texts(rate, channels));
    }
    void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate) override
    {
        m_format = begin(QStringLiteral("SetOGGFormat"), texts(rate, channels, bitRate));
    }
    void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum, qint32 maximum) override
    {
        m_format = begin(QStringLiteral("SetOGGFormat"), texts(rate, channels, bitRate, minimum, maximum));
    }
    void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum, qint32 maximum,
                      qint16 quality) override
    {
        m_format =
            begin(QStringLiteral("SetOGGFormat"), texts(rate, channels, bitRate, minimum, maximum, quality));
    }
    void SelectWMAProfile(qint32 profile) override
    {
        begin(QStringLiteral("SelectWMAProfile"), texts(profile));
        m_format = profileNames.value(profile, QStringLiteral("Profile %1").arg(profile));
    }
    void setExtendedFormats(bool extended) override
    {
        set(QStringLiteral("ExtendedFormats"), yesNoText(extended));
    }
    void setWhileReading(std::function<bool()> goOn) override { whileReading = std::move(goOn); }
    NCTMP3Options &MP3Options() override
    {
        begin(QStringLiteral("MP3Options"), {});
        return *this;
    }
    bool CheckOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum,
                        qint32 maximum) const override
    {
        begin(QStringLiteral("CheckOGGFormat"), texts(rate, channels, bitRate, minimum, maximum),
              yesNoText(oggPossible));
        return oggPossible;
    }

private:
    void setVBRMaxBitRate(qint32 rate) override { setMP3(QStringLiteral("VBRMaxBitRate"), rate); }
    void setVBRQuality(qint32 quality) override { setMP3(QStringLiteral("VBRQuality"), quality); }
    void setConstantBitRate(bool constant) override { setMP3(QStringLiteral("ConstantBitRate"), constant); }
    void setChannelMode(qint32 mode) override { setMP3(QStringLiteral("ChannelMode"), mode); }
    void setCBRQuality(qint32 quality) override { setMP3(QStringLiteral("CBRQuality"), quality); }
    void setWriteVBRHeader(bool write) override { setMP3(QStringLiteral("WriteVBRHeader"), write); }
    void setStrictMinBitRate(bool strict) override { setMP3(QStringLiteral("StrictMinBitRate"), strict); }
    void setSampleRate(qint32 rate) override { setMP3(QStringLiteral("SampleRate"), rate); }
    void setChannelCount(qint32 channels) override { setMP3(QStringLiteral("ChannelCount"), channels); }
    void setCBRBitRate(qint32 rate) override { setMP3(QStringLiteral("CBRBitRate"), rate); }

    template <typename... Numbers>
    static QStringList texts(Numbers... numbers)
    {
        return {QString::number(numbers)...};
    }

    /// Logs "name.call(arguments)", lets happen what happens during it, and refuses; gives "call(arguments)".
    QString begin(const QString &call, const QStringList &arguments, const QString &answer = {}) const
    {
        const QString whole =
            arguments.isEmpty() ? call : call + u'(' + arguments.join(QStringLiteral(", ")) + u')';
        enter(whole, answer.isNull() ? QString() : QStringLiteral(" -> ") + answer, call);
        return whole;
    }

    qint32 answer(const QString &call, qint32 value) const
    {
        begin(call, {}, QString::number(value));
        return value;
    }

    void set(const QString &property, const QString &value)
    {
        enter(property + QStringLiteral(" = ") + value, {}, property);
    }
    void setMP3(const QString &property, qint32 value)
    {
        set(QStringLiteral("MP3.") + property, QString::number(value));
    }
    void setMP3(const QString &property, bool value)
    {
        set(QStringLiteral("MP3.") + property, yesNoText(value));
    }

    void enter(const QString &whole, const QString &rest, const QString &bare) const
    {
        const QString call = m_name + u'.' + whole;
        m_log.add(call + rest);
        if (during)
            during(call);
        if (refused.contains(call) || refused.contains(m_name + u'.' + bare))
            throw RunTimeFailure(RunTimeFailure::InvalidCall);
    }

    CallLog &m_log;
    const QString m_name;
    QString m_format;
    qint32 m_status = 0;
    Source m_source;
    bool m_open = false;
    qint64 m_left = 0;
    QString m_target;
    qint64 m_values = 0;
};
