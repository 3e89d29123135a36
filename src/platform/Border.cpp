#include "platform/Border.h"

#include "base/Log.h"
#include "platform/Dialogs.h"

void Border::endWithCaught() noexcept
{
    if (m_end.isEnding())
        return;
    try {
        const RunTimeFailure failure = RunTimeFailure::ofCaught();
        qCCritical(logProgram) << "The program ends:" << failure.what();
        const QString text =
            QStringLiteral("Run-time error '%1':\n\n%2").arg(failure.number()).arg(failure.description());
        m_dialogs.messageBox(nullptr, {.text = text, .icon = BoxIcon::Critical});
    } catch (...) { // ended by another handler while the box was open, or there is no memory for a box
    }
    if (!m_end.isEnding())
        m_end.end(1);
}
