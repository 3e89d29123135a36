#include "platform/Border.h"

#include "platform/Dialogs.h"

void Border::endWith(const RunTimeFailure &failure)
{
    if (m_end.isEnding())
        return;
    const QString text =
        QStringLiteral("Run-time error '%1':\n\n%2").arg(failure.number()).arg(failure.description());
    try {
        m_dialogs.messageBox(nullptr, {.text = text, .icon = BoxIcon::Critical});
    } catch (const ProgramEnding &) { // ended by another handler while the box was open
    }
    if (!m_end.isEnding())
        m_end.end(1);
}
