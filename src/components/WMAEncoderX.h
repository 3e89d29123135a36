#pragma once

#include <QObject>

/// The WMA encoder of a rip. It holds the table of the combinations of sample rate, bit rate and channels
/// that can be written; a property takes any number, and a combination outside the table fails when a job
/// starts. Sample rates go as an index: 0 to 6 for 8000, 11025, 16000, 22050, 32000, 44100, 48000 Hz. Bit
/// rates are in kb/s. The number behind each operation is its dispatch id.
class WMAEncoderX : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void setWMASampleRateIndex(qint32 index) = 0;                                          // 5
    virtual void setWMABitRate(qint32 rate) = 0;                                                   // 6
    virtual void setWMAStereo(bool stereo) = 0;                                                    // 7
    virtual bool IsFormatSupported(qint32 sampleRateIndex, qint32 bitRate, bool stereo) const = 0; // 8
    /// Whether any stereo format exists at this bit rate.
    virtual bool IsStereoSupported(qint32 bitRate) const = 0; // 9
    /// Whether any mono format exists at this bit rate.
    virtual bool IsMonoSupported(qint32 bitRate) const = 0; // 10
    virtual void setWMAEnableDRM(bool enable) = 0;          // 11

    /// What goes to `CDRipperX::SetEncoder`.
    virtual QObject *innerObject() = 0; // 0x8001001C
};
