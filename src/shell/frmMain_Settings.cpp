// The stored settings, put to work.
#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "settings/EncoderSettings.h"
#include "settings/Folders.h"
#include "settings/ListLook.h"
#include "settings/SettingsKeys.h"
#include "shell/frmMain.h"

void frmMain::LoadMainSettings()
{
    const SkipFailures skip;
    skip([&] {
        LoadEncoderSettings(m_settings, desktop().systemVersion, WindowsVersionName, *m_parts.MP3EncoderX1,
                            *m_parts.WMAEncoderX1, *m_parts.VorbisEncoderX1);
    });
    for (std::size_t index = 0; index < m_sFolder.size(); ++index)
        skip([&] {
            m_sFolder[index] = m_settings.read(Ini::outputDirectory(m_settings, Formats::all()[index]));
        });
    skip([&] { txtOutputDirectory->setText(m_sFolder[selectedFormat()]); });
    skip([&] { LoadGridLines(m_settings, *lvwTracks); });
    skip([&] { LoadListColorsAndFont(m_settings, *lvwTracks); });
    fitColumns();
    skip([&] { Toolbar1->setBarStyle(toInt32(m_settings.read(Ini::Toolbar_Style))); });
    skip([&] { control<QAction>(QStringLiteral("mnuToolsSub_9"))->setChecked(Toolbar1->barStyle() != 0); });
    skip([&] { CreateDirectoryPath(desktop().dialogs, this, txtOutputDirectory->text()); });
    skip([&] { IKnowVistaNotice = toYesNo(m_settings.read(Ini::IKnow)); });
}
