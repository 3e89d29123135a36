#include "metadata/frmCddb.h"

#include "base/Deployment.h"
#include "base/DiscInfo.h"
#include "base/Text.h"
#include "components/CDDB.h"
#include "components/CDRipperX.h"
#include "controls/DigitsOnly.h"
#include "controls/InputGate.h"
#include "metadata/TrackListHost.h"
#include "metadata/TrackTitles.h"
#include "platform/Dialogs.h"
#include "settings/GenreList.h"

namespace {

/// Gives labels of different frames the width of the widest, so that what stands behind them forms a column.
void alignLabels(std::initializer_list<QLabel *> labels)
{
    int width = 0;
    for (const QLabel *label : labels)
        width = std::max(width, label->sizeHint().width());
    for (QLabel *label : labels)
        label->setMinimumWidth(width);
}

} // namespace

frmCddb::frmCddb(const Desktop &desktop, const Parts &parts, std::unique_ptr<CDDB> client)
    : FormOf(desktop), m_parts(parts), CDDB1(std::move(client))
{
    setupUi(this);
    TabStrip1->addTab(QStringLiteral("Server && Proxy"));
    TabStrip1->addTab(QStringLiteral("Download from FreeDB"));
    TabStrip1->addTab(QStringLiteral("Submit to FreeDB"));
    layOutTitleColumns(*ListView1);
    alignLabels({Label1_6, Label1_0, Label1_3, Label1_5});
    for (QLineEdit *box : {txtTime, txtPort, txtYear})
        new DigitsOnly(box);
    // Both buttons to submit with bear the same letter and do the same: one of them answers to it.
    cmdSubmitCDDB->setShortcut({});
    attachHandlers();
}

frmCddb::~frmCddb() = default;

void frmCddb::attachHandlers()
{
    attach(TabStrip1, &QTabBar::currentChanged, [this] { TabStrip1_Click(); });
    attachClick(chkProxy, [this] { UpdateProxyControls(); });
    attachClick(chkLogin, [this] { UpdateProxyControls(); });
    attach(ListView1, &ReportListView::listClicked, [this] { ListView1_Click(); });
    attach(ListView1, &ReportListView::returnPressed, [this] { ListView1_Click(); });
    for (QPushButton *button : {cmdGet, cmdDownload})
        attach(button, &QPushButton::clicked, [this] { cmdGet_Click(); });
    for (QPushButton *button : {cmdSubmitCDDB, cmdSubmit})
        attach(button, &QPushButton::clicked, [this] { cmdSubmitCDDB_Click(); });
    attach(OKButton, &QPushButton::clicked, [this] { OKButton_Click(); });
}

void frmCddb::Form_Load()
{
    for (const QString &host : Deployment::FreeDbHosts)
        cboHost->addEntry(host);
    cboHost->setListIndex(0);
    for (const QString &category : CDDB::Categories)
        cboCate->addEntry(category);
    cboCate->setListIndex(1);
    m_discId = m_parts.CDRipperX1.DiscId();
    txtID->setText(m_discId);
    UpdateProxyControls();
    TabStrip1_Click();
    LoadServerSettings();
    fillGenres(*cboGenre, m_parts.AInfo);
    showDisc(m_parts.discInfo);
}

void frmCddb::showDisc(const DiscInfo &disc)
{
    ListView1->clearRows();
    addTitleRows(*ListView1, m_parts.host, disc.TrackTitles);
    txtAlbum->setText(disc.Album);
    txtArtist->setText(disc.Artist);
    txtYear->setText(disc.Year);
    txtComm->setText(disc.Comment);
    cboGenre->setListIndex(disc.GenreIndex);
}

void frmCddb::closeEvent(QCloseEvent *event)
{
    if (m_bExchanging && !isUnloaded())
        event->ignore();
    else
        FormOf::closeEvent(event);
}

bool frmCddb::isSameDisc() const
{
    const QString id = m_parts.CDRipperX1.DiscId();
    return id == m_discId || id.endsWith(QStringLiteral("00")); // the number of tracks
}

void frmCddb::TabStrip1_Click()
{
    pages->setCurrentIndex(TabStrip1->currentIndex());
}

void frmCddb::ListView1_Click()
{
    if (m_bExchanging)
        return;
    askForTitle(*ListView1, desktop().dialogs, this);
}

void frmCddb::OKButton_Click()
{
    if (m_bExchanging) {
        if (m_gate)
            m_gate->cancel();
        return;
    }
    SaveServerSettings();
    if (!isSameDisc()) {
        unload(); // the record is that of another disc than the page
        return;
    }
    DiscInfo &disc = m_parts.discInfo;
    disc.Album = trimBlanks(txtAlbum->text());
    disc.Year = trimBlanks(txtYear->text());
    disc.Artist = trimBlanks(txtArtist->text());
    disc.Comment = trimBlanks(txtComm->text());
    disc.GenreIndex = static_cast<qint16>(cboGenre->listIndex());
    disc.TrackTitles = joinedTitles(*ListView1);
    m_parts.host.UpdateFileNamesWithTitles();
    unload();
}

void frmCddb::showInformation(const QString &text)
{
    desktop().dialogs.messageBox(this, {.text = text});
}

void frmCddb::showError(const QString &text)
{
    desktop().dialogs.messageBox(this, {.text = text, .icon = BoxIcon::Critical});
}

void frmCddb::showFailure(qint16 status)
{
    if (status == CDDB::NoConnection)
        showError(QStringLiteral("Can not connect to the server"));
    else if (status == CDDB::OtherFailure)
        showError(QStringLiteral("Unknown Error!"));
}
