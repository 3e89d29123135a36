#pragma once

#include "base/Formats.h"
#include "settings/OptionsPage.h"
#include "ui_OptionsFolders.h"

#include <QLineEdit>
#include <vector>

/// The output folders: a row for each format.
class OptionsFolders : public OptionsPage, private Ui::OptionsFolders
{
public:
    OptionsFolders(Form &form, const SettingsStore &store);

    void load() override;
    void save() const override;
    void reset() override;

private:
    void addRow(const Format &format);
    void pickFolder(QLineEdit &box);

    struct Row
    {
        const Format &format;
        QLineEdit *box;
    };
    std::vector<Row> m_rows;
};
