#pragma once

#include "platform/Form.h"

class frmMain;
class frmMain1;

/// The composition root: it joins the windows with the engines. One object is the whole program but for the
/// application object and its event loop.
class Program
{
public:
    /// `desktop` outlives the program.
    explicit Program(const Desktop &desktop);
    ~Program();

    /// Loads and shows the main window.
    void start();

    /// The main window; nothing before the start and once it was closed.
    std::shared_ptr<frmMain> mainWindow() const { return m_mainWindow.lock(); }

private:
    FormSlot<frmMain1> m_frmMain1; ///< outlives the main window where the user leaves it open
    FormSlot<frmMain> m_frmMain;
    std::weak_ptr<frmMain> m_mainWindow;
};
