#pragma once

#include <QString>
#include <functional>

class CDRipperX;
class Dialogs;
class DropDownList;
class QTimer;
class QWidget;
class ReportListView;
struct DiscInfo;

/// Keeps the main window in step with the drive: reads a disc's table of contents into the track list, offers
/// the drive's speeds, and watches for a disc that leaves or comes.
class DiscWatch
{
public:
    /// The controls of the main window that it works on.
    struct Controls
    {
        DropDownList &cboDevices;
        DropDownList &cboSpeeds;
        ReportListView &lvwTracks;
        QTimer &Timer1;
    };

    /// `extension` gives the extension of new names, `offerDiscLookup` is called after each reading that
    /// ended normally. All that is referred to outlives the watch.
    DiscWatch(CDRipperX &engine, DiscInfo &discInfo, Dialogs &dialogs, QWidget *owner,
              const Controls &controls, std::function<QString()> extension,
              std::function<void()> offerDiscLookup);

    /// The disc reading. A failure ends it with a box and leaves the watch stopped until the next reading.
    void cboDevices_Click();
    void cboSpeeds_Click();
    void Timer1_Timer();

private:
    void readDisc();
    void readTracks();
    qint32 readTrack(qint16 track);
    void FillSpeeds();

    CDRipperX &m_engine;
    DiscInfo &m_discInfo;
    Dialogs &m_dialogs;
    QWidget *m_owner;
    Controls m_controls;
    std::function<QString()> m_extension;
    std::function<void()> m_offerDiscLookup;
    bool m_bDiscGone = false; ///< so that a disc that comes back is read only once
};
