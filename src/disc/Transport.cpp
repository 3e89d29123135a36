#include "disc/Transport.h"

#include "components/CDRipperX.h"

#include <QAction>

Transport::Transport(CDRipperX &engine, QAction &button, QAction &entry)
    : m_engine(engine), m_button(button), m_entry(entry)
{}

void Transport::pauseOrResume()
{
    const bool pause = m_button.text() == QStringLiteral("Pause");
    if (pause)
        m_engine.PausePlay();
    else
        m_engine.ResumePlay();
    m_button.setChecked(pause);
    m_button.setText(pause ? QStringLiteral("Resum") : QStringLiteral("Pause"));
    m_entry.setText(pause ? QStringLiteral("&Resume") : QStringLiteral("P&ause"));
}
