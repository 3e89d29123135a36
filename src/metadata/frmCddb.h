#pragma once

#include "platform/Form.h"
#include "ui_frmCddb.h"

#include <functional>
#include <memory>

class CDDB;
class CDRipperX;
class NCTAudioInformation;
class SettingsStore;
class TrackListHost;
struct DiscInfo;

/// Looks the disc up at a FreeDB server and writes what came back into the disc record, or submits what the
/// user typed; beside that the choice of the server and the proxy. Modal.
/// An exchange with the server blocks under the wait cursor.
class frmCddb : public FormOf<QDialog>, private Ui::frmCddb
{
    Q_OBJECT

public:
    /// What the window works with; all of it outlives the window.
    struct Parts
    {
        TrackListHost &host;
        DiscInfo &discInfo;
        const SettingsStore &settings;
        const NCTAudioInformation &AInfo;
        const CDRipperX &CDRipperX1; ///< asked for the disc's id, and whether it is still the same
    };

    frmCddb(const Desktop &desktop, const Parts &parts, std::unique_ptr<CDDB> client);
    ~frmCddb() override;

private:
    // frmCddb.cpp: loading, pages, closing
    void attachHandlers();
    void Form_Load() override;
    void closeEvent(QCloseEvent *event) override;
    /// Shows the disc in the drive and what the record says of it.
    void showDisc(const DiscInfo &disc);
    /// Whether no other disc came into the drive.
    bool isSameDisc() const;
    /// Where another disc lies in the drive than before, shows that one and returns true.
    bool followDisc();
    void TabStrip1_Click();
    void ListView1_Click();
    void OKButton_Click();
    void showInformation(const QString &text);
    void showError(const QString &text);
    /// The boxes that both exchanges have in common.
    void showFailure(qint16 status);

    using Guard = std::function<void(const std::function<void()> &)>;

    // frmCddb_Server.cpp: the page of the server and the proxy
    /// Hands the page to the client; each statement runs within `guard`.
    void writeConnection(const Guard &guard);
    void LoadServerSettings();
    void SaveServerSettings();
    void UpdateProxyControls();

    // frmCddb_Lookup.cpp
    void cmdGet_Click();
    void takeLookup();
    QString lookupReport() const;

    // frmCddb_Submit.cpp
    void cmdSubmitCDDB_Click();
    /// What keeps the entry from being sent; empty where nothing does.
    QString findRefusal();
    void takeSubmission();

    Parts m_parts;
    std::unique_ptr<CDDB> CDDB1;
    QString m_discId; ///< of the disc that the window shows
    /// An exchange runs, or what follows on it: no other command may start from within.
    bool m_bExchanging = false;
};
