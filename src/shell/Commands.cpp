#include "shell/Commands.h"

#include "base/Deployment.h"

namespace Commands {

namespace {

Command entry(const char *caption, const char *icon = "", const char *shortcut = "")
{
    return {QString::fromLatin1(caption), QString::fromLatin1(icon), QString::fromLatin1(shortcut), {}};
}

Command button(const char *caption, const char *toolTip, const char *icon)
{
    return {QString::fromLatin1(caption), QString::fromLatin1(icon), {}, QString::fromLatin1(toolTip)};
}

Command separator()
{
    return entry("-");
}

} // namespace

const std::vector<Command> &mnuFileSub()
{
    static const std::vector<Command> entries = {
        entry("&Check All Tracks", "checkall"),
        entry("&Uncheck All Tracks", "uncheckall"),
        entry("&Start Ripping", "extract"),
        entry("&Edit Track's File Name", "", "Ctrl+E"),
        separator(),
        entry("&Play", "play", "Ctrl+P"),
        entry("P&ause", "pause", "Ctrl+A"),
        entry("S&top", "stop", "Ctrl+S"),
        separator(),
        entry("&Eject CD-ROM", "eject"),
        entry("&Load CD-ROM", "load"),
        entry("&Refresh", "refresh"),
        separator(),
        entry("E&xit", "exit", "Ctrl+X"),
    };
    return entries;
}

const std::vector<Command> &mnuToolsSub()
{
    static const std::vector<Command> entries = {
        entry("&Audio Converter Tool ...", "convert"),
        separator(),
        {QStringLiteral("&Download CD Information from ") + Deployment::FreeDbName + QStringLiteral("..."),
         QStringLiteral("freedb"),
         {},
         {}},
        entry("&Edit CD Tracks Information...", "edit"),
        entry("&Edit File's ID3 Tag(MP3/OGG)..."),
        separator(),
        entry("&Options ...", "options"),
        separator(),
        entry("&Flat Toolbar"),
    };
    return entries;
}

const std::vector<Command> &mnuHelpSub()
{
    static const std::vector<Command> entries = {
        entry("Help &Contents", "help", "F1"),
        entry("Having problems using on Windows Vista?"),
        separator(),
        entry("&Visit Website", "home"),
        entry("&Email Support"),
        separator(),
        entry("&Related Products"),
        separator(),
        entry("&About ..."),
    };
    return entries;
}

const std::vector<Command> &mnuProdSub()
{
    static const std::vector<Command> entries = [] {
        std::vector<Command> links;
        for (const auto &[caption, address] : Deployment::RelatedLinks)
            links.push_back({caption, {}, {}, {}});
        links.push_back(separator());
        links.push_back(entry("&List of Them ..."));
        return links;
    }();
    return entries;
}

const std::vector<Command> &Toolbar1()
{
    static const std::vector<Command> buttons = {
        button("Extract", "Start Ripping", "extract"),
        button("Edit", "Edit File's Name", "edit"),
        button("FreeDB", "Download from FreeDB", "freedb"),
        separator(),
        button("Refresh", "Refresh CD Tracks", "refresh"),
        button("Eject", "Eject CD-ROM", "eject"),
        separator(),
        button("Play", "Play the highlighted track", "play"),
        button("Pause", "Pause the track", "pause"),
        button("Stop", "Stop playing the track", "stop"),
        separator(),
        button("Convert", "Audio Converter Tool ...", "convert"),
        button("Options", "Options", "options"),
        button("Help", "Help Documents", "help"),
        button("Home", "Visit Homepage", "home"),
        separator(),
        button("Exit", "Exit", "exit"),
    };
    return buttons;
}

} // namespace Commands
