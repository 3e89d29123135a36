#pragma once

#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "components/MP3EncoderX.h"
#include "components/VorbisEncoderX.h"
#include "components/WMAEncoderX.h"
#include "testkit/CallLog.h"

#include <QMap>
#include <functional>

/// What the doubles of the three encoders have in common: each call goes into the log, "mp3.CBRBitRate = 192"
/// for a value that is set and "mp3.EncodingMethod -> 0" for a question with its answer. What `refused` holds
/// is failure 5 and changes nothing: a whole call, "mp3.CBRBitRate = 100", or a name, "wma.IsMonoSupported".
class FakeEncoder
{
public:
    QStringList refused;
    QMap<QString, qint32> held; ///< the value of each property, by its bare name; a test may set them

protected:
    FakeEncoder(CallLog &log, const QString &name) : m_log(log), m_name(name) {}
    ~FakeEncoder() = default;

    void set(const QString &property, qint32 value)
    {
        logSet(property, QString::number(value));
        held[property] = value;
    }

    void set(const QString &property, bool value)
    {
        logSet(property, yesNoText(value));
        held[property] = value;
    }

    qint32 get(const QString &property) const
    {
        return ask(property, held.value(property), QString::number(held.value(property)));
    }

    /// `call` is the question with its arguments.
    template <typename Answer>
    Answer ask(const QString &call, Answer answer, const QString &answerText) const
    {
        const QString whole = m_name + u'.' + call;
        m_log.add(whole + QStringLiteral(" -> ") + answerText);
        refuse(whole, whole.section(u'(', 0, 0));
        return answer;
    }

private:
    void logSet(const QString &property, const QString &value)
    {
        const QString name = m_name + u'.' + property;
        const QString whole = name + QStringLiteral(" = ") + value;
        m_log.add(whole);
        refuse(whole, name);
    }

    void refuse(const QString &whole, const QString &name) const
    {
        if (refused.contains(whole) || refused.contains(name))
            throw RunTimeFailure(RunTimeFailure::InvalidCall);
    }

    CallLog &m_log;
    const QString m_name;
};

class FakeMP3Encoder : public MP3EncoderX, public FakeEncoder
{
public:
    explicit FakeMP3Encoder(CallLog &log) : FakeEncoder(log, QStringLiteral("mp3")) {}

    void setCBRBitRate(qint32 rate) override { set(QStringLiteral("CBRBitRate"), rate); }
    void setVBRQuality(qint32 quality) override { set(QStringLiteral("VBRQuality"), quality); }
    void setVBRMinBitRate(qint32 rate) override { set(QStringLiteral("VBRMinBitRate"), rate); }
    qint32 VBRMinBitRate() const override { return get(QStringLiteral("VBRMinBitRate")); }
    void setVBRMaxBitRate(qint32 rate) override { set(QStringLiteral("VBRMaxBitRate"), rate); }
    qint32 VBRMaxBitRate() const override { return get(QStringLiteral("VBRMaxBitRate")); }
    void setEncodingMethod(qint32 method) override { set(QStringLiteral("EncodingMethod"), method); }
    qint32 EncodingMethod() const override { return get(QStringLiteral("EncodingMethod")); }
    void setQualityMode(qint32 mode) override { set(QStringLiteral("QualityMode"), mode); }
    void setChannelMode(qint32 mode) override { set(QStringLiteral("ChannelMode"), mode); }
    void setVBRMode(qint32 mode) override { set(QStringLiteral("VBRMode"), mode); }
    QObject *innerObject() override { return this; }
};

/// Writes any format unless the test says which ones in `supports`.
class FakeWMAEncoder : public WMAEncoderX, public FakeEncoder
{
public:
    explicit FakeWMAEncoder(CallLog &log) : FakeEncoder(log, QStringLiteral("wma")) {}

    /// Sample rate index, bit rate in kb/s, stereo.
    std::function<bool(qint32, qint32, bool)> supports = [](qint32, qint32, bool) { return true; };

    void setWMASampleRateIndex(qint32 index) override { set(QStringLiteral("WMASampleRateIndex"), index); }
    void setWMABitRate(qint32 rate) override { set(QStringLiteral("WMABitRate"), rate); }
    void setWMAStereo(bool stereo) override { set(QStringLiteral("WMAStereo"), stereo); }
    void setWMAEnableDRM(bool enable) override { set(QStringLiteral("WMAEnableDRM"), enable); }
    bool IsFormatSupported(qint32 index, qint32 rate, bool stereo) const override
    {
        const bool yes = supports(index, rate, stereo);
        return ask(
            QStringLiteral("IsFormatSupported(%1, %2, %3)").arg(index).arg(rate).arg(yesNoText(stereo)), yes,
            yesNoText(yes));
    }
    bool IsStereoSupported(qint32 rate) const override
    {
        const bool yes = supportsChannels(rate, true);
        return ask(QStringLiteral("IsStereoSupported(%1)").arg(rate), yes, yesNoText(yes));
    }
    bool IsMonoSupported(qint32 rate) const override
    {
        const bool yes = supportsChannels(rate, false);
        return ask(QStringLiteral("IsMonoSupported(%1)").arg(rate), yes, yesNoText(yes));
    }
    QObject *innerObject() override { return this; }

private:
    bool supportsChannels(qint32 rate, bool stereo) const
    {
        for (qint32 index = 0; index <= 6; ++index) {
            if (supports(index, rate, stereo))
                return true;
        }
        return false;
    }
};

class FakeVorbisEncoder : public VorbisEncoderX, public FakeEncoder
{
public:
    explicit FakeVorbisEncoder(CallLog &log) : FakeEncoder(log, QStringLiteral("vorbis")) {}

    void setNominalBitRate(qint32 rate) override { set(QStringLiteral("NominalBitRate"), rate); }
    void setMinBitRate(qint32 rate) override { set(QStringLiteral("MinBitRate"), rate); }
    void setMaxBitRate(qint32 rate) override { set(QStringLiteral("MaxBitRate"), rate); }
    QObject *innerObject() override { return this; }
};

/// The three encoders that the main window would own, on one log.
struct FakeEncoders
{
    explicit FakeEncoders(CallLog &log) : mp3(log), wma(log), vorbis(log) {}

    FakeMP3Encoder mp3;
    FakeWMAEncoder wma;
    FakeVorbisEncoder vorbis;
};
