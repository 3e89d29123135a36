#include "controls/DropDownList.h"

#include "base/RunTimeFailure.h"

DropDownList::DropDownList(QWidget *parent) : QComboBox(parent)
{
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT userClicked(); });
}

void DropDownList::addEntry(const QString &text, qint32 number)
{
    const int chosen = currentIndex();
    addItem(text, number);
    // The first entry of a combo box becomes the chosen one by itself.
    QComboBox::setCurrentIndex(chosen);
}

void DropDownList::setListIndex(int row)
{
    if (row < -1 || row >= count())
        throw RunTimeFailure(RunTimeFailure::InvalidCall);
    QComboBox::setCurrentIndex(row);
    if (row >= 0)
        clickFromCode();
}

qint32 DropDownList::itemNumber(int row) const
{
    if (row < 0 || row >= count())
        throw RunTimeFailure(RunTimeFailure::SubscriptOutOfRange);
    return itemData(row).toInt();
}

void DropDownList::chooseNumber(double number)
{
    for (int row = 0; row < count(); ++row) {
        if (itemNumber(row) == number) {
            setListIndex(row);
            return;
        }
    }
}
