#pragma once

#include <QObject>
#include <QString>

/// Turns a WAV file into a VQF file. `VqfEncode` returns at once; `VqfProgress` tells the percentage and
/// arrives on the thread that owns the object. 100 means that the file stands whole under its name. A file
/// that can't be converted reports no 100, but why, as the end of a sentence. The number behind each
/// operation is its dispatch id.
class VEnc : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void setVqfBitRate(qint16 rate) = 0;            // 1, kb/s
    virtual void setVqfInputFile(const QString &path) = 0;  // 2
    virtual void setVqfOutputFile(const QString &path) = 0; // 3
    virtual void VqfEncode() = 0;                           // 4

Q_SIGNALS:
    void VqfProgress(qint32 percent); // slot 9; may go above 100
    void VqfFailed(const QString &reason);
};
