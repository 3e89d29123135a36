// The page of the server and the proxy.
#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "components/CDDB.h"
#include "metadata/frmCddb.h"
#include "settings/SettingsKeys.h"

namespace {

/// Ticks a box by a stored number, of which only 0, 1 and 2 are states of a box.
void tickBy(TickBox *box, const QString &stored)
{
    const qint16 state = toInt16(stored);
    if (state < 0 || state > 2)
        throw RunTimeFailure(RunTimeFailure::InvalidCall);
    box->setTicked(state != 0);
}

QString tickText(const TickBox *box)
{
    return box->isTicked() ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

void frmCddb::LoadServerSettings()
{
    const SkipFailures skip;
    const SettingsStore &ini = m_parts.settings;
    skip([&] { tickBy(chkProxy, ini.read(Ini::UseProxy)); });
    skip([&] { txtServer->setText(ini.read(Ini::ProxyServer)); });
    skip([&] { txtPort->setText(ini.read(Ini::ProxyPort)); });
    skip([&] { tickBy(chkLogin, ini.read(Ini::ProxyNeedLogin)); });
    skip([&] { txtUser->setText(ini.read(Ini::ProxyUserName)); });
    skip([&] { txtPass->setText(ini.read(Ini::ProxyPassword)); });
    skip([&] { txtTime->setText(ini.read(Ini::Timeout)); });
}

void frmCddb::SaveServerSettings()
{
    const SettingsStore &ini = m_parts.settings;
    SettingsStore::Transaction save(ini);
    ini.write(Ini::UseProxy, tickText(chkProxy));
    ini.write(Ini::ProxyServer, txtServer->text());
    ini.write(Ini::ProxyPort, txtPort->text());
    ini.write(Ini::ProxyNeedLogin, tickText(chkLogin));
    ini.write(Ini::ProxyUserName, txtUser->text());
    ini.write(Ini::ProxyPassword, txtPass->text());
    ini.write(Ini::Timeout, txtTime->text());
    SkipFailures()([&] { save.commit(); });
}

void frmCddb::UpdateProxyControls()
{
    const bool use = chkProxy->isTicked();
    const bool login = chkLogin->isTicked();
    for (QWidget *control :
         std::initializer_list<QWidget *>{txtServer, txtPort, chkLogin, Label1_5, Label1_4, Label1_3})
        control->setEnabled(use);
    for (QWidget *control : std::initializer_list<QWidget *>{txtUser, txtPass, Label1_2, Label1_1})
        control->setEnabled(use && login);
}

void frmCddb::writeConnection(const Guard &guard)
{
    guard([this] { CDDB1->setUseProxy(chkProxy->isTicked()); });
    guard([this] { CDDB1->setProxyServer(txtServer->text()); });
    guard([this] { CDDB1->setProxyPort(txtPort->text()); });
    guard([this] { CDDB1->setNeedLogin(chkLogin->isTicked()); });
    guard([this] { CDDB1->setProxyUser(txtUser->text()); });
    guard([this] { CDDB1->setProxyPassword(txtPass->text()); });
    guard([this] { CDDB1->setTimeOut(txtTime->text()); });
    guard([this] { CDDB1->setHostName(cboHost->currentText()); });
}
