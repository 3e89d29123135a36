#pragma once

#include <QString>
#include <vector>

/// An entry of a menu, or a button of the toolbar; its index counts from 1. The caption "-" is a separator.
struct Command
{
    QString caption;
    QString icon;     ///< a drawing in resources/icons; may be empty
    QString shortcut; ///< of menu entries
    QString toolTip;  ///< of toolbar buttons
};

namespace Commands {

const std::vector<Command> &mnuFileSub();
const std::vector<Command> &mnuToolsSub();
const std::vector<Command> &mnuHelpSub();
/// The related links, and behind them the entry of the window that lists them.
const std::vector<Command> &mnuProdSub();
const std::vector<Command> &Toolbar1();

enum FileEntry {
    CheckAll = 1,
    UncheckAll,
    StartRippingEntry,
    EditFileName,
    Play = 6,
    PauseOrResume,
    Stop,
    Eject = 10,
    Load,
    Refresh,
    Exit = 14
};
enum ToolsEntry {
    AudioConverter = 1,
    DownloadInformation = 3,
    EditTracks,
    EditTags,
    Options = 7,
    FlatToolbar = 9
};
enum HelpEntry { HelpContents = 1, VistaNotice, Website = 4, EmailSupport, RelatedProducts = 7, About = 9 };
enum Button {
    ButtonExtract = 1,
    ButtonEdit,
    ButtonFreeDb,
    ButtonRefresh = 5,
    ButtonEject,
    ButtonPlay = 8,
    ButtonPause,
    ButtonStop,
    ButtonConvert = 12,
    ButtonOptions,
    ButtonHelp,
    ButtonHome,
    ButtonExit = 17
};

} // namespace Commands
