#pragma once

#include "platform/Desktop.h"
#include "platform/Form.h"

#include <memory>

class frmMain;

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

    /// The main window; nothing once it was closed.
    std::shared_ptr<frmMain> mainWindow() const { return m_window.lock(); }

private:
    FormSlot<frmMain> m_slot;
    std::weak_ptr<frmMain> m_window;
};
