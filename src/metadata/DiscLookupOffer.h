#pragma once

#include <QTimer>
#include <functional>

class Dialogs;
class SettingsStore;

/// The offer to look a disc up, one second after it was read. While the main window can't ask, because it
/// isn't shown yet or is still starting, the timer goes on and the question comes a second or more later.
class DiscLookupOffer
{
public:
    struct Parts
    {
        QWidget *mainWindow; ///< owns the question and the timer `Timer3`
        Dialogs &dialogs;
        const SettingsStore &settings;
    };

    /// `mayAsk`: the main window is visible and not starting. `showCddb` shows `frmCddb` modal.
    DiscLookupOffer(const Parts &parts, std::function<bool()> mayAsk, std::function<void()> showCddb);

    /// `Timer3`, whose time-out is to be attached to `Timer3_Timer`.
    QTimer *timer() const { return Timer3; }

    /// At the end of a disc reading that gave `tracks` tracks. Without any the timer is left as it is.
    void OfferDiscLookup(int tracks);
    void Timer3_Timer();

private:
    Parts m_parts;
    std::function<bool()> m_mayAsk;
    std::function<void()> m_showCddb;
    QTimer *Timer3;
};
