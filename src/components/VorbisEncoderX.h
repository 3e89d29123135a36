#pragma once

#include <QObject>

/// The Ogg Vorbis encoder of a rip. Bit rates are in kb/s. The number behind each operation is its dispatch
/// id.
class VorbisEncoderX : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// 0 leaves the choice to the encoder.
    virtual void setNominalBitRate(qint32 rate) = 0; // 5
    /// 0 for no limit.
    virtual void setMinBitRate(qint32 rate) = 0; // 6
    virtual void setMaxBitRate(qint32 rate) = 0; // 7

    /// What goes to `CDRipperX::SetEncoder`.
    virtual QObject *innerObject() = 0; // 0x8001001C
};
