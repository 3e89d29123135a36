#pragma once

#include <QtGlobal>

class Dialogs;
class QWidget;
class ReportListView;

/// The chosen colour number, or -12345 where the user cancels.
qint32 ChooseColorDialog(Dialogs &dialogs, QWidget *owner, qint32 color);

/// Lets the user choose the list's font and text colour. Yes where the list was changed: a cancel leaves it
/// as it is. A font chosen here has a whole point size, a half going to the even neighbour.
bool ChooseFontDialog(Dialogs &dialogs, QWidget *owner, ReportListView &target);
