#include "settings/OptionsPage.h"

#include "base/Numbers.h"
#include "platform/Dialogs.h"

double OptionsPage::stored(const IniKey &key) const
{
    return toNumber(m_store.read(key));
}

void OptionsPage::store(const IniKey &key, qint32 number) const
{
    m_store.write(key, QString::number(number));
}

void OptionsPage::showInformation(const QString &text) const
{
    desktop().dialogs.messageBox(window(), {.text = text});
}
