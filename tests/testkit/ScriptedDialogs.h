#pragma once

#include "platform/Dialogs.h"

#include <deque>
#include <functional>
#include <memory>

/// Answers dialogs by a script. A box that isn't next in the script fails the test, and so does an
/// expectation that is left over when the script is destroyed. While a box is "open" its `meanwhile` runs.
class ScriptedDialogs : public Dialogs
{
public:
    using Meanwhile = std::function<void()>;

    ~ScriptedDialogs() override;

    /// A message box with exactly this text and title.
    void expectBox(const QString &text, BoxAnswer answer = BoxAnswer::Ok, const QString &title = ProgramTitle,
                   Meanwhile meanwhile = {});
    /// The same, with the icon and the buttons compared as well.
    void expectWholeBox(const MessageBox &box, BoxAnswer answer = BoxAnswer::Ok, Meanwhile meanwhile = {});
    /// An input box with exactly this prompt, offering `offered`; an empty answer is a cancel.
    void expectInput(const QString &prompt, const QString &offered, const QString &answer);
    void expectFiles(const QStringList &answer);
    void expectFolder(const QString &answer);
    void expectColor(qint32 offered, qint32 answer);
    void expectFont(const std::optional<FontChoice> &answer);

    bool isDone() const { return m_script.empty(); }
    const InputBox &lastInput() const { return m_lastInput; }
    const OpenFiles &lastFiles() const { return m_lastFiles; }
    const FontChoice &lastFont() const { return m_lastFont; }

    BoxAnswer messageBox(QWidget *owner, const MessageBox &box) override;
    QString inputBox(QWidget *owner, const InputBox &box) override;
    QStringList openFiles(QWidget *owner, const OpenFiles &request) override;
    QString browseForFolder(QWidget *owner, const QString &title) override;
    qint32 chooseColor(QWidget *owner, qint32 color) override;
    std::optional<FontChoice> chooseFont(QWidget *owner, const FontChoice &choice) override;

private:
    enum class Kind { Box, Input, Files, Folder, Color, Font };
    struct Step
    {
        Kind kind;
        QString expected; ///< what is compared; empty: nothing is
        std::function<void(const MessageBox &)> check;
        Meanwhile meanwhile;
        BoxAnswer box = BoxAnswer::Ok;
        QString text;
        QStringList files;
        qint32 color = 0;
        std::optional<FontChoice> font;
    };

    /// The next step of the script; an empty one after failing the test, where it is of another kind.
    Step next(Kind kind, const QString &shown);

    std::deque<Step> m_script;
    InputBox m_lastInput;
    OpenFiles m_lastFiles;
    FontChoice m_lastFont;
};
