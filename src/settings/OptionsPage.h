#pragma once

#include "platform/FormPart.h"
#include "settings/SettingsStore.h"

#include <QWidget>

/// A page of the options. Its controls are its only model: nothing reaches settings.ini or an encoder before
/// it is told to. Choosing an entry from code runs the click rule of its list, so the order of the choices
/// within these operations matters.
class OptionsPage : public QWidget, protected FormPart
{
public:
    /// Shows what is stored. What can't be shown is passed over.
    virtual void load() = 0;
    virtual void save() const = 0;
    /// Shows the values of a new installation.
    virtual void reset() = 0;

protected:
    /// `store` outlives the page.
    OptionsPage(Form &form, const SettingsStore &store) : FormPart(form), m_store(store) {}

    const SettingsStore &settings() const { return m_store; }
    /// The stored number. Failure 13 for a text that is none.
    double stored(const IniKey &key) const;
    void store(const IniKey &key, qint32 number) const;
    void showInformation(const QString &text) const;

private:
    const SettingsStore &m_store;
};
