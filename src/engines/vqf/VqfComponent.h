#pragma once

#include "components/VEnc.h"

#include <thread>

namespace vqf {

/// Converts in a thread of its own, one file at a time. Starting another file or destroying the object ends a
/// conversion that still runs, without leaving a part of its file.
class VqfComponent : public VEnc
{
    Q_OBJECT

public:
    /// `threads`: how many share the work of one file.
    explicit VqfComponent(int threads = 2, QObject *parent = nullptr);
    ~VqfComponent() override;

    /// Raises a RunTimeFailure (5) for anything but 96.
    void setVqfBitRate(qint16 rate) override;
    void setVqfInputFile(const QString &path) override { m_input = path; }
    void setVqfOutputFile(const QString &path) override { m_output = path; }
    /// Raises a RunTimeFailure (429) in a build without the encoder.
    void VqfEncode() override;

private:
    void stop();

    const int m_threads;
    QString m_input;
    QString m_output;
    std::jthread m_thread;
    int m_job = 0; ///< number of the last one started
};

} // namespace vqf
