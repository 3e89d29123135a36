#pragma once

class CDRipperX;
class QAction;

/// The preview's pause button. Its state is its caption alone: "Pause" means that the next press pauses.
class Transport
{
public:
    /// `button` is the toolbar's, `entry` the menu's; both outlive the transport.
    Transport(CDRipperX &engine, QAction &button, QAction &entry);

    /// Pauses or resumes, and flips button and entry, whether anything is playing or not.
    void pauseOrResume();

private:
    CDRipperX &m_engine;
    QAction &m_button;
    QAction &m_entry;
};
