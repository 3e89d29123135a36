#include "settings/OptionsFolders.h"

#include "base/Text.h"
#include "settings/Folders.h"
#include "settings/SettingsKeys.h"

#include <QLabel>
#include <QPushButton>

namespace {

constexpr int WidestButton = 44;

} // namespace

OptionsFolders::OptionsFolders(Form &form, const SettingsStore &store) : OptionsPage(form, store)
{
    setupUi(this);
    for (const Format &format : Formats::all())
        addRow(format);
}

/// A label, the folder's box, and a button that chooses the folder.
void OptionsFolders::addRow(const Format &format)
{
    const QString directory = format.name + QStringLiteral(" Output Directory");
    auto *const label = new QLabel(directory + u':');
    auto *const box = new QLineEdit;
    auto *const button = new QPushButton(QStringLiteral("..."));
    const QString boxName =
        format.encType == EncMP3 ? QStringLiteral("txt%1Folder") : QStringLiteral("txt%1Directory");
    label->setObjectName(QStringLiteral("lbl%1Folder").arg(format.name));
    label->setBuddy(box);
    box->setObjectName(boxName.arg(format.name));
    box->setAccessibleName(directory);
    button->setObjectName(QStringLiteral("cmd%1Folder").arg(format.name));
    button->setAccessibleName(QStringLiteral("Choose the ") + directory);
    button->setMaximumWidth(WidestButton);
    const auto row = static_cast<int>(m_rows.size());
    layoutDirectories->addWidget(label, row, 0);
    layoutDirectories->addWidget(box, row, 1);
    layoutDirectories->addWidget(button, row, 2);
    attach(button, &QPushButton::clicked, [this, box] { pickFolder(*box); });
    m_rows.push_back({format, box});
}

void OptionsFolders::load()
{
    for (const Row &row : m_rows)
        row.box->setText(settings().read(Ini::outputDirectory(settings(), row.format)));
}

void OptionsFolders::save() const
{
    for (const Row &row : m_rows)
        settings().write(Ini::outputDirectory(settings(), row.format), row.box->text());
}

void OptionsFolders::reset()
{
    for (const Row &row : m_rows)
        row.box->setText(Ini::outputDirectory(settings(), row.format).defaultValue);
}

void OptionsFolders::pickFolder(QLineEdit &box)
{
    const QString path = BrowseForFolder(desktop().dialogs, window());
    if (!path.isEmpty())
        box.setText(trimBlanks(path).endsWith(PathSeparator) ? path : path + PathSeparator);
}
