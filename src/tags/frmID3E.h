#pragma once

#include "components/NCTAudioInformation.h"
#include "platform/Form.h"
#include "tags/TagRecord.h"
#include "ui_frmID3E.h"

#include <QElapsedTimer>

class InputGate;

/// The ID3 Editor: a batch of MP3 and OGG files as one album. The list holds the files in track order, each
/// with its title; the boxes below hold the album's data, which are those of the file added last until the
/// user types others. Saving writes them into every file, in a thread: meanwhile input comes to nothing but
/// for Escape, "Close" and the close box, which break the saving off. Modal.
class frmID3E : public FormOf<QDialog>, private Ui::frmID3E
{
    Q_OBJECT

public:
    frmID3E(const Desktop &desktop, std::unique_ptr<NCTAudioInformation> AInfo);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Form_Load() override;
    void closeEvent(QCloseEvent *event) override;
    void cmdOpen_Click();
    void cmdRemove_Click();
    void cmdEdit_Click();
    void cmdUp_Click();
    void cmdDown_Click();
    void cmdSave_Click();
    void cmdClose_Click();
    void Command1_Click();
    void ListView1_DblClick();

    void OpenFiles();
    void AddFiles(const QStringList &files);
    void AddOneFileToList(const QString &strFile);
    bool IsFileInList(const QString &strFile) const;
    /// The full path of a row; empty where `no` is greater than the number of rows.
    QString GetFileByNo(qint16 no) const;
    TagRecord ReadFileTags(const QString &strFile) const;
    void RemoveCheckedFiles();
    void RenumberRows();
    void MoveFileUp();
    void MoveFileDown();
    /// Moves the selected row to a place beside it.
    void moveSelectedRow(int step);
    /// Exchanges what two rows hold; their numbers and ticks stay in place.
    void SwapRows(int a, int b);
    void SaveFileTags(qint16 no);
    /// The title that a row stands for.
    QString titleOf(int row) const;
    /// Writes a file's tags in a thread and waits for it.
    void writeBeside(const QString &path, qint16 no);
    void showProgress(qint16 no, const TagWriting &writing);
    /// Marks the row of a file that can't be written with the reason; an empty one takes the mark away.
    void markRow(int row, const QString &reason);

    void inform(const QString &text);
    bool hasNoRows() const { return ListView1->rowCount() == 0; }

    std::unique_ptr<NCTAudioInformation> m_AInfo;
    InputGate *m_gate = nullptr; ///< while files are saved
    QElapsedTimer m_saving;      ///< since the first of them
    int m_saved = 0;
    static constexpr int WholeText = Qt::UserRole; ///< of a title that its row may show cut
    TagRecord m_whole;                             ///< of the file that filled the boxes
    bool CheckAllNext = true;                      ///< what the next press of Command1 gives to all rows
};
