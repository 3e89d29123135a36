#pragma once

class Border;
class Clock;
class Dialogs;
class EventPump;
class ProgramEnd;
class Registry;
class Shell;
class SystemVersion;
struct ProgramPaths;

/// All that a window asks of the system around it, handed to each window's constructor. The parts outlive
/// every window.
struct Desktop
{
    Dialogs &dialogs;
    Shell &shell;
    EventPump &pump;
    const Clock &clock;
    const SystemVersion &systemVersion;
    const ProgramPaths &paths;
    ProgramEnd &end;
    Border &border;
    const Registry &registry;
};
