#pragma once

#include "base/Text.h"

#include <QFont>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <optional>

class QWidget;

enum class BoxIcon { None, Information, Question, Exclamation, Critical };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };

/// A message box as the caller words it.
struct MessageBox
{
    QString text;
    BoxIcon icon = BoxIcon::Information;
    BoxButtons buttons = BoxButtons::Ok;
    QString title = ProgramTitle;
    std::optional<BoxAnswer> preset = {}; ///< what the Enter key answers; none: the first of the buttons
};

/// A box with a prompt and one line to type in.
struct InputBox
{
    QString prompt;
    QString title;
    QString text;                   ///< offered for editing
    std::optional<QPoint> position; ///< of its top left corner on the screen, in pixels; else centred
};

/// Opening of several files. A filter reads "MP3 files (*.mp3)".
struct OpenFiles
{
    QString title;
    QStringList filters;
    qsizetype filter = 0; ///< index of the one chosen at first
    QString directory;    ///< empty: where the last one was
};

/// What a font dialog shows and gives.
struct FontChoice
{
    QFont font;       ///< family, point size, weight, italic, underline, strike-out
    qint32 color = 0; ///< of the text, a colour number
};

/// Every modal question to the user. In tests a script stands in. All calls come from the UI thread; while
/// one of them waits, events are handled. Where the program is ending a call unwinds instead of returning.
class Dialogs
{
public:
    static constexpr qint32 ColorCancelled = -12345;

    virtual ~Dialogs() = default;

    virtual BoxAnswer messageBox(QWidget *owner, const MessageBox &box) = 0;
    /// The typed text; empty on a cancel.
    virtual QString inputBox(QWidget *owner, const InputBox &box) = 0;
    /// The chosen paths; none on a cancel.
    virtual QStringList openFiles(QWidget *owner, const OpenFiles &request) = 0;
    /// A folder's path, with a closing separator for a root only; empty on a cancel.
    virtual QString browseForFolder(QWidget *owner, const QString &title) = 0;
    /// A colour number, or ColorCancelled.
    virtual qint32 chooseColor(QWidget *owner, qint32 color) = 0;
    /// Nothing on a cancel.
    virtual std::optional<FontChoice> chooseFont(QWidget *owner, const FontChoice &choice) = 0;
};
