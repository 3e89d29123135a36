#pragma once

#include "platform/Form.h"
#include "shell/MainWindowParts.h"

class frmAbout;
class frmCddb;
class frmExtract;
class frmID3E;
class frmOptions;
class frmProducts;
class frmTrack;
class frmVista;
class RipHost;
class SettingsStore;
class TrackListHost;
struct DiscInfo;

/// The modal windows that the main window opens, each made on its first use and afresh after unloading. Every
/// operation returns when its window has been closed.
class ProgramWindows
{
public:
    /// All that is referred to outlives the windows.
    struct Parts
    {
        QWidget *owner; ///< the main window
        MainWindowParts &components;
        RipHost &ripHost;
        TrackListHost &trackListHost;
        DiscInfo &discInfo;
        const SettingsStore &settings;
        const QString &windowsVersionName;
    };

    ProgramWindows(const Desktop &desktop, const Parts &parts);
    ~ProgramWindows();

    void showExtract(qint32 encType);
    void showOptions();
    void showCddb();
    void showTrackEditor();
    void showTagEditor();
    void showVistaNotice();
    void showAbout();
    void showProducts();

private:
    Parts m_parts;
    FormSlot<frmExtract> m_frmExtract;
    FormSlot<frmOptions> m_frmOptions;
    FormSlot<frmCddb> m_frmCddb;
    FormSlot<frmTrack> m_frmTrack;
    FormSlot<frmID3E> m_frmID3E;
    FormSlot<frmVista> m_frmVista;
    FormSlot<frmAbout> m_frmAbout;
    FormSlot<frmProducts> m_frmProducts;
};
