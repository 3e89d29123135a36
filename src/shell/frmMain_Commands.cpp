// The menu bar and the toolbar.
#include "base/Deployment.h"
#include "base/Numbers.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "settings/HelpPages.h"
#include "settings/SettingsKeys.h"
#include "shell/Commands.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QMenu>

namespace {

/// Fills a menu or a tool bar with a table's commands, each named after the array and its index from 1.
template <typename Bar>
QList<QAction *> addCommands(Bar &bar, QObject &owner, const QString &array,
                             const std::vector<Command> &commands)
{
    QList<QAction *> actions;
    for (const Command &command : commands) {
        auto *action = new QAction(command.caption, &owner);
        action->setObjectName(QStringLiteral("%1_%2").arg(array).arg(actions.size() + 1));
        action->setSeparator(command.caption == QStringLiteral("-"));
        action->setMenuRole(QAction::NoRole);
        if (!command.icon.isEmpty())
            action->setIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(command.icon)));
        if (!command.shortcut.isEmpty())
            action->setShortcut(QKeySequence(command.shortcut));
        if (!command.toolTip.isEmpty())
            action->setToolTip(command.toolTip);
        bar.addAction(action);
        actions.append(action);
    }
    return actions;
}

} // namespace

void frmMain::makeCommands()
{
    using Handler = void (frmMain::*)(int);
    const auto attachAll = [this](const QList<QAction *> &actions, Handler handler) {
        for (int i = 0; i < actions.size(); ++i)
            attach(actions[i], &QAction::triggered, [this, handler, i] { (this->*handler)(i + 1); });
        return actions;
    };
    const auto add = [this](auto &bar, const char *array, const std::vector<Command> &commands) {
        return addCommands(bar, *this, QString::fromLatin1(array), commands);
    };
    const auto file =
        attachAll(add(*mnuFile, "mnuFileSub", Commands::mnuFileSub()), &frmMain::mnuFileSub_Click);
    const auto tools =
        attachAll(add(*mnuTools, "mnuToolsSub", Commands::mnuToolsSub()), &frmMain::mnuToolsSub_Click);
    const auto help =
        attachAll(add(*mnuHelp, "mnuHelpSub", Commands::mnuHelpSub()), &frmMain::mnuHelpSub_Click);
    auto *links = new QMenu(this);
    links->setObjectName(QStringLiteral("mnuProdSub"));
    attachAll(add(*links, "mnuProdSub", Commands::mnuProdSub()), &frmMain::mnuProdSub_Click);
    help[Commands::RelatedProducts - 1]->setMenu(links);
    const auto buttons =
        attachAll(add(*Toolbar1, "Toolbar1", Commands::Toolbar1()), &frmMain::Toolbar1_ButtonClick);
    tools[Commands::FlatToolbar - 1]->setCheckable(true);
    QAction *pause = buttons[Commands::ButtonPause - 1];
    pause->setCheckable(true);
    m_transport.emplace(*m_parts.CDRipperX1, *pause, *file[Commands::PauseOrResume - 1]);
}

void frmMain::mnuFileSub_Click(int Index)
{
    CDRipperX &engine = *m_parts.CDRipperX1;
    switch (Index) {
    case Commands::CheckAll:
        return m_tracks.checkAll(true);
    case Commands::UncheckAll:
        return m_tracks.checkAll(false);
    case Commands::StartRippingEntry:
        return StartRipping();
    case Commands::EditFileName:
        return editFileName();
    case Commands::Play:
        return engine.PlayTrack(static_cast<qint16>(highlightedRow()));
    case Commands::PauseOrResume:
        return m_transport->pauseOrResume();
    case Commands::Stop:
        return engine.StopPlay();
    case Commands::Eject:
        return engine.EjectTray();
    case Commands::Load:
        return engine.LoadTray();
    case Commands::Refresh:
        return m_watch.cboDevices_Click();
    case Commands::Exit:
        return askToClose();
    default:
        return;
    }
}

void frmMain::mnuToolsSub_Click(int Index)
{
    switch (Index) {
    case Commands::AudioConverter:
        return m_parts.showAudioConverter();
    case Commands::DownloadInformation:
        return downloadInformation();
    case Commands::EditTracks:
        return editTracks();
    case Commands::EditTags:
        return m_windows.showTagEditor();
    case Commands::Options:
        return showOptions();
    case Commands::FlatToolbar:
        return toggleFlatToolbar();
    default:
        return;
    }
}

void frmMain::mnuHelpSub_Click(int Index)
{
    switch (Index) {
    case Commands::HelpContents:
        return openHelp(desktop());
    case Commands::VistaNotice:
        return m_windows.showVistaNotice();
    case Commands::Website:
        return desktop().shell.open(Deployment::WebAddress);
    case Commands::EmailSupport:
        return desktop().shell.open(QStringLiteral("mailto:") + Deployment::SupportAddress);
    case Commands::About:
        return m_windows.showAbout();
    default:
        return;
    }
}

void frmMain::mnuProdSub_Click(int Index)
{
    const auto link = static_cast<std::size_t>(Index - 1);
    if (link < Deployment::RelatedLinks.size())
        desktop().shell.open(Deployment::RelatedLinks[link].second);
    else
        m_windows.showProducts();
}

void frmMain::Toolbar1_ButtonClick(int Index)
{
    switch (Index) {
    case Commands::ButtonExtract:
        return StartRipping();
    case Commands::ButtonEdit:
        return editTracks();
    case Commands::ButtonFreeDb:
        return downloadInformation();
    case Commands::ButtonRefresh:
        return mnuFileSub_Click(Commands::Refresh);
    case Commands::ButtonEject:
        return mnuFileSub_Click(Commands::Eject);
    case Commands::ButtonPlay:
        return playFromToolbar();
    case Commands::ButtonPause:
        return m_transport->pauseOrResume();
    case Commands::ButtonStop:
        return mnuFileSub_Click(Commands::Stop);
    case Commands::ButtonConvert:
        return m_parts.showAudioConverter();
    case Commands::ButtonOptions:
        return showOptions();
    case Commands::ButtonHelp:
        return openHelp(desktop());
    case Commands::ButtonHome:
        return mnuHelpSub_Click(Commands::Website);
    case Commands::ButtonExit:
        return askToClose();
    default:
        return;
    }
}

void frmMain::editFileName()
{
    if (m_tracks.count() == 0)
        desktop().dialogs.messageBox(this, {.text = QStringLiteral("No tracks in the list to edit!")});
    else
        renameTrack();
}

/// Failure 91 where no row is highlighted.
int frmMain::highlightedRow() const
{
    const int row = lvwTracks->selectedRow();
    if (row == 0)
        throw RunTimeFailure(RunTimeFailure::ObjectNotSet);
    return row;
}

void frmMain::playFromToolbar()
{
    if (m_tracks.count() == 0)
        desktop().dialogs.messageBox(this, {.text = QStringLiteral("No tracks in the list to play!")});
    else
        mnuFileSub_Click(Commands::Play);
}

void frmMain::toggleFlatToolbar()
{
    // The entry's own press has flipped its check mark.
    const bool flat = control<QAction>(QStringLiteral("mnuToolsSub_9"))->isChecked();
    Toolbar1->setBarStyle(flat ? CommandBar::Flat : CommandBar::Standard);
    m_settings.write(Ini::Toolbar_Style, QString::number(Toolbar1->barStyle()));
}
