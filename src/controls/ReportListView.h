#pragma once

#include <QTreeWidget>

/// A report-style list: rows of texts under headings, optionally with a check box in each row, grid lines,
/// and a look of its own. Rows count from 1 and columns from 0, the first column being the row's own text; a
/// row or column that isn't there is failure 9.
class ReportListView : public QTreeWidget
{
    Q_OBJECT
    Q_PROPERTY(bool gridLines READ gridLines WRITE setGridLines)
    Q_PROPERTY(bool checkBoxes READ checkBoxes WRITE setCheckBoxes)

public:
    explicit ReportListView(QWidget *parent = nullptr);

    int rowCount() const { return topLevelItemCount(); }
    /// Appends a row, unchecked, and gives its number.
    int addRow(const QStringList &texts);
    void removeRow(int row);
    void clearRows() { clear(); }

    QString text(int row, int column) const { return item(row)->text(column); }
    void setText(int row, int column, const QString &text) { item(row)->setText(column, text); }
    bool isChecked(int row) const { return item(row)->checkState(0) == Qt::Checked; }
    void setChecked(int row, bool checked)
    {
        item(row)->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
    }

    /// The highlighted row, 0 where there is none.
    int selectedRow() const;
    void selectRow(int row);

    bool checkBoxes() const { return m_checkBoxes; }
    /// For the rows added from now on.
    void setCheckBoxes(bool on) { m_checkBoxes = on; }
    bool gridLines() const { return m_gridLines; }
    void setGridLines(bool on);

    /// Colour numbers, 0x00BBGGRR.
    qint32 backColor() const;
    void setBackColor(qint32 color);
    qint32 foreColor() const;
    void setForeColor(qint32 color);

    /// Left edge of a column within the list, in pixels.
    int columnLeft(int column) const;

Q_SIGNALS:
    /// A click on the list, on a row or beside the rows.
    void listClicked();
    /// A double click, or the key that stands for it.
    void listDoubleClicked();
    /// That key alone, for lists where a single click does the same.
    void returnPressed();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;

private:
    QTreeWidgetItem *item(int row) const;
    void setPaletteColor(QPalette::ColorRole role, qint32 color);

    bool m_checkBoxes = false;
    bool m_gridLines = false;
};
