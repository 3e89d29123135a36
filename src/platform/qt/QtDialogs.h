#pragma once

#include "platform/Dialogs.h"

class ProgramEnd;

/// Qt's dialogs.
class QtDialogs : public Dialogs
{
public:
    explicit QtDialogs(const ProgramEnd &end) : m_end(end) {}

    BoxAnswer messageBox(QWidget *owner, const MessageBox &box) override;
    QString inputBox(QWidget *owner, const InputBox &box) override;
    QStringList openFiles(QWidget *owner, const OpenFiles &request) override;
    QString browseForFolder(QWidget *owner, const QString &title) override;
    qint32 chooseColor(QWidget *owner, qint32 color) override;
    std::optional<FontChoice> chooseFont(QWidget *owner, const FontChoice &choice) override;

private:
    const ProgramEnd &m_end;
    QString m_lastDirectory;
};
