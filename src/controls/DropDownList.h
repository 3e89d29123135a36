#pragma once

#include "controls/ClickSource.h"

#include <QComboBox>

/// A drop-down list whose entries pair a text with a number. Choosing an entry runs the click rule every
/// time, also when the entry was chosen already. Rows count from 0; -1 stands for no row.
class DropDownList : public QComboBox, public ClickSource
{
    Q_OBJECT

public:
    explicit DropDownList(QWidget *parent = nullptr);

    /// Adds it at the end; what is chosen stays as it is, and no click runs.
    void addEntry(const QString &text, qint32 number = 0);
    /// Empties the list; nothing is chosen then, and no click runs.
    void clearEntries() { clear(); }

    int listIndex() const { return currentIndex(); }
    /// Chooses a row and runs the click rule; -1 takes the choice back and runs nothing. Failure 5 for a row
    /// that isn't there.
    void setListIndex(int row);

    /// The number of a row. Failure 9 for a row that isn't there.
    qint32 itemNumber(int row) const;
    /// The number of the chosen row. Failure 9 where none is chosen.
    qint32 chosenNumber() const { return itemNumber(listIndex()); }
    /// Chooses the first row with this number, and runs the click rule; no such row leaves all as it is.
    void chooseNumber(double number);

Q_SIGNALS:
    void userClicked();

private:
    // Choosing goes through the operations above.
    using QComboBox::addItem;
    using QComboBox::setCurrentIndex;
};
