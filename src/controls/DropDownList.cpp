#include "controls/DropDownList.h"

#include "base/RunTimeFailure.h"

DropDownList::DropDownList(QWidget *parent) : QComboBox(parent)
{
    // The first entry that is added must not become the chosen one by itself.
    connect(model(), &QAbstractItemModel::rowsInserted, this, [this] {
        if (count() == 1)
            QComboBox::setCurrentIndex(-1);
    });
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT userClicked(); });
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
