#include "platform/qt/QtDialogs.h"

#include "base/ColorNumber.h"
#include "platform/ProgramEnd.h"
#include "platform/qt/FontDialog.h"
#include "platform/qt/KeptCustomColors.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

namespace {

QMessageBox::Icon qtIcon(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::None:
        return QMessageBox::NoIcon;
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons qtButtons(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::Ok:
        return QMessageBox::Ok;
    case BoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case BoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton qtButton(BoxAnswer answer)
{
    switch (answer) {
    case BoxAnswer::Ok:
        return QMessageBox::Ok;
    case BoxAnswer::Cancel:
        return QMessageBox::Cancel;
    case BoxAnswer::Yes:
        return QMessageBox::Yes;
    case BoxAnswer::No:
        return QMessageBox::No;
    }
    return QMessageBox::NoButton;
}

/// "Files (*.mp3)" as "Files (*.mp3) (*.mp3 *.MP3)", of which only the last part is a pattern: some desktops'
/// dialogs tell small letters from large ones.
QString inBothCases(const QString &filter)
{
    const QString patterns = filter.mid(filter.lastIndexOf(u'(') + 1).chopped(1);
    return QStringLiteral("%1 (%2 %3)").arg(filter, patterns, patterns.toUpper());
}

/// A window that is not on screen can't own a dialog.
QWidget *visibleOwner(QWidget *owner)
{
    return owner && owner->isVisible() ? owner : QApplication::activeWindow();
}

} // namespace

BoxAnswer QtDialogs::messageBox(QWidget *owner, const MessageBox &box)
{
    QMessageBox dialog(qtIcon(box.icon), box.title, box.text, qtButtons(box.buttons), visibleOwner(owner));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (box.preset)
        dialog.setDefaultButton(qtButton(*box.preset));
    const int answer = dialog.exec();
    m_end.unwindIfEnding();
    switch (answer) {
    case QMessageBox::Yes:
        return BoxAnswer::Yes;
    case QMessageBox::No:
        return BoxAnswer::No;
    case QMessageBox::Cancel:
        return BoxAnswer::Cancel;
    default:
        return BoxAnswer::Ok;
    }
}

QString QtDialogs::inputBox(QWidget *owner, const InputBox &box)
{
    QInputDialog dialog(visibleOwner(owner));
    dialog.setWindowTitle(box.title);
    // The label is the edit field's buddy: "&" would mark a key.
    dialog.setLabelText(QString(box.prompt).replace(u'&', QStringLiteral("&&")));
    if (auto *label = dialog.findChild<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    dialog.setTextValue(box.text);
    if (auto *edit = dialog.findChild<QLineEdit *>()) {
        edit->setMinimumWidth(dialog.fontMetrics().averageCharWidth() * 50);
        edit->selectAll();
    }
    if (box.position)
        dialog.move(*box.position);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    m_end.unwindIfEnding();
    return accepted ? dialog.textValue() : QString();
}

QStringList QtDialogs::openFiles(QWidget *owner, const OpenFiles &request)
{
    QFileDialog dialog(visibleOwner(owner), request.title,
                       request.directory.isEmpty() ? m_lastDirectory : request.directory);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    QStringList filters;
    for (const QString &filter : request.filters)
        filters += inBothCases(filter);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(filters);
    if (request.filter < filters.size())
        dialog.selectNameFilter(filters[request.filter]);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    m_end.unwindIfEnding();
    if (!accepted)
        return {};
    m_lastDirectory = dialog.directory().absolutePath();
    QStringList files;
    for (const QString &file : dialog.selectedFiles())
        files.append(QDir::toNativeSeparators(file));
    return files;
}

QString QtDialogs::browseForFolder(QWidget *owner, const QString &title)
{
    QFileDialog dialog(visibleOwner(owner), title);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    m_end.unwindIfEnding();
    if (!accepted || dialog.selectedFiles().isEmpty())
        return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

qint32 QtDialogs::chooseColor(QWidget *owner, qint32 color)
{
    // The custom colours are black at each opening.
    const KeptCustomColors kept;
    for (int i = 0; i < QColorDialog::customCount(); ++i)
        QColorDialog::setCustomColor(i, Qt::black);
    QColorDialog dialog(colorFromNumber(color), visibleOwner(owner));
    const bool accepted = dialog.exec() == QDialog::Accepted;
    m_end.unwindIfEnding();
    return accepted ? colorNumber(dialog.selectedColor()) : ColorCancelled;
}

std::optional<FontChoice> QtDialogs::chooseFont(QWidget *owner, const FontChoice &choice)
{
    FontDialog dialog(choice, visibleOwner(owner));
    const bool accepted = dialog.exec() == QDialog::Accepted;
    m_end.unwindIfEnding();
    return accepted ? std::optional(dialog.choice()) : std::nullopt;
}
