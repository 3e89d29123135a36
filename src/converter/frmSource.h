#pragma once

#include "converter/StepFrame.h"
#include "platform/FormPart.h"
#include "ui_frmSource.h"

#include <QSet>

/// The second step: the list of sources.
class frmSource : public StepFrame, private Ui::frmSource, private FormPart
{
    Q_OBJECT

public:
    explicit frmSource(Form &form);

    /// The format code of what the dialog offers and dropped folders are searched for.
    void setFormat(qint16 code) { m_nSourceFormat = code; }
    int count() const { return lstFile->count(); }
    QString file(int row) const { return lstFile->item(row)->text(); }
    /// Puts the focus on the button that adds files.
    void focusAdd() { cmdAdd->setFocus(); }

Q_SIGNALS:
    /// Files came or went.
    void changed();

private:
    void cmdAdd_Click();
    void cmdRemove_Click();
    void cmdClearAll_Click();
    void lstFile_PathsDropped(const QStringList &paths);
    bool IsFileInList(const QString &path) const;
    void addSources(const QStringList &paths);

    qint16 m_nSourceFormat = 0;
    QSet<QString> m_paths; ///< the rows of the list
};
