#pragma once

#include <QObject>

/// The MP3 encoder of a rip. The program sets its properties and hands its inner object to the CD engine. A
/// value that the encoder can't take is a RunTimeFailure (5) and changes nothing. Bit rates are in kb/s.
/// The number behind each operation is its dispatch id.
class MP3EncoderX : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void setCBRBitRate(qint32 rate) = 0; // 2
    /// 0 to 9, 0 being the slow, high quality end.
    virtual void setVBRQuality(qint32 quality) = 0; // 3
    virtual void setVBRMinBitRate(qint32 rate) = 0; // 4
    virtual qint32 VBRMinBitRate() const = 0;       // 4
    virtual void setVBRMaxBitRate(qint32 rate) = 0; // 5
    virtual qint32 VBRMaxBitRate() const = 0;       // 5
    /// 0 CBR, 1 VBR.
    virtual void setEncodingMethod(qint32 method) = 0; // 6
    virtual qint32 EncodingMethod() const = 0;         // 6
    /// 1 Normal, 0 Studio.
    virtual void setQualityMode(qint32 mode) = 0; // 11
    /// 0 Stereo, 1 J-Stereo, 2 Mono, 3 Dual Channel.
    virtual void setChannelMode(qint32 mode) = 0; // 12
    /// The method of variable bit rate coding.
    virtual void setVBRMode(qint32 mode) = 0; // 17

    /// What goes to `CDRipperX::SetEncoder`.
    virtual QObject *innerObject() = 0; // 0x8001001C
};
