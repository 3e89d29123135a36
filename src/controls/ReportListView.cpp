#include "controls/ReportListView.h"

#include "base/ColorNumber.h"
#include "base/RunTimeFailure.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

ReportListView::ReportListView(QWidget *parent) : QTreeWidget(parent)
{
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setEditTriggers(NoEditTriggers);
    header()->setSectionsMovable(false);
}

int ReportListView::addRow(const QStringList &texts)
{
    auto *row = new QTreeWidgetItem(this, texts);
    row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren);
    if (m_checkBoxes) {
        row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
        row->setCheckState(0, Qt::Unchecked);
    }
    return rowCount();
}

void ReportListView::removeRow(int row)
{
    delete item(row);
}

QTreeWidgetItem *ReportListView::item(int row) const
{
    QTreeWidgetItem *found = topLevelItem(row - 1);
    if (!found)
        throw RunTimeFailure(RunTimeFailure::SubscriptOutOfRange);
    return found;
}

int ReportListView::selectedRow() const
{
    const QList<QTreeWidgetItem *> selected = selectedItems();
    return selected.isEmpty() ? 0 : indexOfTopLevelItem(selected.first()) + 1;
}

void ReportListView::selectRow(int row)
{
    setCurrentItem(item(row));
}

void ReportListView::setGridLines(bool on)
{
    m_gridLines = on;
    viewport()->update();
}

qint32 ReportListView::backColor() const
{
    return colorNumber(palette().color(QPalette::Base));
}

void ReportListView::setBackColor(qint32 color)
{
    setPaletteColor(QPalette::Base, color);
}

qint32 ReportListView::foreColor() const
{
    return colorNumber(palette().color(QPalette::Text));
}

void ReportListView::setForeColor(qint32 color)
{
    setPaletteColor(QPalette::Text, color);
}

void ReportListView::setPaletteColor(QPalette::ColorRole role, qint32 color)
{
    QPalette colors = palette();
    colors.setColor(role, colorFromNumber(color));
    setPalette(colors);
}

int ReportListView::columnLeft(int column) const
{
    return columnViewportPosition(column);
}

void ReportListView::mouseReleaseEvent(QMouseEvent *event)
{
    QTreeWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT listClicked();
}

void ReportListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTreeWidget::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT listDoubleClicked();
}

/// What the mouse does with a click the keyboard does too: Return stands for the double click.
void ReportListView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT returnPressed();
        Q_EMIT listDoubleClicked();
    } else if (const int row = selectedRow(); event->key() == Qt::Key_Space && m_checkBoxes && row > 0) {
        setChecked(row, !isChecked(row)); // whichever column was clicked last
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

void ReportListView::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    QTreeWidget::drawRow(painter, option, index);
    if (!m_gridLines)
        return;
    // A line colour between paper and ink shows on any pair of them.
    const QColor paper = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::Text);
    painter->save();
    painter->setPen(QColor((paper.red() * 3 + ink.red()) / 4, (paper.green() * 3 + ink.green()) / 4,
                           (paper.blue() * 3 + ink.blue()) / 4));
    painter->drawLine(option.rect.left(), option.rect.bottom(), option.rect.right(), option.rect.bottom());
    for (int column = 0; column < columnCount(); ++column) {
        const int right = columnViewportPosition(column) + columnWidth(column) - 1;
        painter->drawLine(right, option.rect.top(), right, option.rect.bottom());
    }
    painter->restore();
}
