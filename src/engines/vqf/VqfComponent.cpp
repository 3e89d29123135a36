#include "engines/vqf/VqfComponent.h"

#include "base/Log.h"
#include "base/RunTimeFailure.h"
#include "base/Thread.h"
#include "engines/vqf/Format.h"
#include "engines/vqf/VqfEncoder.h"
#include "engines/vqf/WavReader.h"
#include "files/WholeFile.h"

#include <QElapsedTimer>
#include <functional>

namespace vqf {

namespace {

constexpr qint64 ProgressInterval = 200; // ms
/// Little enough to stop soon, whatever the rate of the input.
constexpr qint64 FramesAtATime = 2 * FrameSize;

/// Converts the whole file unless it is to stop; whether it did. Raises a RunTimeFailure.
bool convert(WavReader &input, const QString &path, const codecs::EncoderRecipe &recipe,
             const std::stop_token &stop, const std::function<void(qint32 percent)> &report)
{
    files::WholeFile output(path);
    const auto encoder = recipe.create(input.format(), output);
    QElapsedTimer sinceReport;
    sinceReport.start();
    qint64 done = 0;
    for (;;) {
        if (stop.stop_requested())
            return false;
        const std::vector<qint16> &samples = input.read(FramesAtATime);
        if (samples.empty())
            break;
        const auto frames = static_cast<qint64>(samples.size()) / input.format().channels;
        encoder->encode(samples.data(), frames);
        done += frames;
        if (sinceReport.elapsed() >= ProgressInterval) {
            report(static_cast<qint32>(99 * done / input.frames()));
            sinceReport.restart();
        }
    }
    if (done < input.frames())
        return false;
    encoder->finish();
    output.commit();
    return true;
}

} // namespace

VqfComponent::VqfComponent(int threads, QObject *parent) : VEnc(parent), m_threads(threads) {}

VqfComponent::~VqfComponent()
{
    stop();
}

void VqfComponent::setVqfBitRate(qint16 rate)
{
    if (rate != KilobitsPerSecond)
        throw RunTimeFailure(RunTimeFailure::InvalidCall,
                             QStringLiteral("VQF files are written at 96 kb/s, not at %1").arg(rate));
}

void VqfComponent::VqfEncode()
{
    const auto recipe = vqfRecipe(m_threads);
    stop();
    const int job = ++m_job;
    // What an ended conversion still had to say is of no interest.
    const auto tell = [this, job](const std::function<void()> &signal) {
        const auto unlessEnded = [this, job, signal] {
            if (job == m_job)
                signal();
        };
        QMetaObject::invokeMethod(this, unlessEnded, Qt::QueuedConnection);
    };
    const auto report = [this, tell](qint32 percent) {
        tell([this, percent] { Q_EMIT VqfProgress(percent); });
    };
    const auto fail = [this, tell, input = m_input](const QString &reason) {
        qCWarning(logConvert).noquote() << input << "given up:" << reason;
        tell([this, reason] { Q_EMIT VqfFailed(reason); });
    };
    const auto work = [=, input = m_input, output = m_output](const std::stop_token &stop) {
        try {
            WavReader reader(input);
            if (!reader.isOpen())
                fail(QStringLiteral("it is no WAV file that can be read"));
            else if (convert(reader, output, *recipe, stop, report))
                report(100);
            else if (!stop.stop_requested())
                fail(QStringLiteral("its sound ends too early"));
        } catch (const std::exception &) {
            fail(RunTimeFailure::ofCaught().reason());
        }
    };
    try {
        m_thread = startThread("vqf file", work);
    } catch (const RunTimeFailure &failure) {
        fail(failure.reason());
    }
}

void VqfComponent::stop()
{
    m_thread = {};
}

} // namespace vqf
