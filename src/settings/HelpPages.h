#pragma once

struct Desktop;

/// Opens the help: `tonelift.chm` beside the program where it is there and the desktop can show such a file,
/// else the same pages in the browser. They lie in `help` beside the program; where there is no such folder
/// the program writes those that are compiled into it to the user's cache. What comes of it isn't told.
void openHelp(const Desktop &desktop);
