#pragma once

#include "base/DiscInfo.h"
#include "base/Formats.h"
#include "controls/OptionButton.h"
#include "disc/DiscWatch.h"
#include "disc/TrackList.h"
#include "disc/Transport.h"
#include "metadata/DiscLookupOffer.h"
#include "metadata/TrackListHost.h"
#include "platform/Form.h"
#include "rip/RipHost.h"
#include "settings/SettingsStore.h"
#include "shell/MainWindowParts.h"
#include "shell/ProgramWindows.h"
#include "ui_frmMain.h"

#include <QMainWindow>
#include <QTimer>
#include <optional>
#include <vector>

/// The main window. It lives for the whole run, owns the engine, the encoders and the tag component, and
/// opens every other window.
class frmMain : public FormOf<QMainWindow>, public RipHost, public TrackListHost, private Ui::frmMain
{
    Q_OBJECT

public:
    frmMain(const Desktop &desktop, MainWindowParts parts);
    ~frmMain() override;

    /// The disc record of the application.
    DiscInfo &discInfo() { return m_discInfo; }
    /// The extension of the names of the current format, with its dot.
    const QString &extension() const { return m_sExtension; }

    int trackRowCount() const override { return m_tracks.count(); }
    bool isTrackChecked(int row) const override { return m_tracks.isChecked(row); }
    QString trackFileName(int row) const override { return m_tracks.fileName(row); }
    QString outputDirectory() const override;
    void cmdIE_Click() override;
    void UpdateFileNamesWithTitles() override;

private:
    // frmMain.cpp: start-up and closing
    /// No step of it stops the start-up or reports a failure.
    void Form_Load() override;
    void attachHandlers();
    void askToClose();
    void fitColumns();
    void addFormats();
    void addStatusPanels();
    template <typename Control>
    Control *control(const QString &name) const
    {
        return findChild<Control *>(name);
    }

    // frmMain_Settings.cpp
    void LoadMainSettings();

    // frmMain_Commands.cpp
    void makeCommands();
    void mnuFileSub_Click(int Index);
    void mnuToolsSub_Click(int Index);
    void mnuHelpSub_Click(int Index);
    void mnuProdSub_Click(int Index);
    void Toolbar1_ButtonClick(int Index);
    void editFileName();
    void playFromToolbar();
    int highlightedRow() const;
    void toggleFlatToolbar();

    // frmMain_Windows.cpp
    void downloadInformation();
    void editTracks();
    void showOptions();

    // frmMain_Tracks.cpp
    QObject *innerEncoder(const Format &format) const;
    void SelectEncoder(std::size_t Index);
    void rdFormat_Click(std::size_t Index);
    void checkBoxes_Click(const TickBox &clicked, TickBox &other);
    void lvwTracks_DblClick();
    void renameTrack();
    void cmdFolder_Click();
    std::size_t selectedFormat() const;

    // frmMain_Ripping.cpp
    void StartRipping();

    MainWindowParts m_parts;
    SettingsStore m_settings;
    DiscInfo m_discInfo;
    TickBox *chkAll2; ///< stands over the list's check column
    QTimer Timer1;    ///< the disc watch
    TrackList m_tracks;
    DiscWatch m_watch;
    std::optional<Transport> m_transport;

    QObject *m_objEncoder = nullptr; ///< the encoder bound to the engine, or nothing
    QString m_sExtension;
    qint16 m_iEditIndex = 0;
    std::vector<OptionButton *> rdFormat; ///< one for each of Formats
    std::vector<QString> m_sFolder;       ///< by the index of rdFormat

    bool Starting = false;
    QString WindowsVersionName;
    bool IKnowVistaNotice = false;

    ProgramWindows m_windows;
    DiscLookupOffer m_offer;
};
