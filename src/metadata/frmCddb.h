#pragma once

#include "platform/Form.h"
#include "ui_frmCddb.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

class CDDB;
class CDRipperX;
class InputGate;
class NCTAudioInformation;
class SettingsStore;
class TrackListHost;
struct DiscInfo;

/// Looks the disc up at a FreeDB server and writes what came back into the disc record, or submits what the
/// user typed; beside that the choice of the server and the proxy. Modal.
///
/// An exchange with the server runs in a thread. The handler waits for it under the wait cursor, while
/// windows are painted and a rip goes on; input comes to nothing but for Escape, "Close" and the close box,
/// which break the exchange off and leave the window as it was.
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

    // frmCddb_Exchange.cpp
    using Exchange = std::function<qint16(const std::stop_token &)>;
    /// The status of an exchange that runs beside the window; nothing where the user broke it off.
    std::optional<qint16> runExchange(const Exchange &exchange);
    /// Where another disc lies in the drive than before, shows that one and returns true.
    bool followDisc();

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
    InputGate *m_gate = nullptr; ///< while the server is waited for
};
