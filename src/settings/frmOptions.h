#pragma once

#include "base/Formats.h"
#include "platform/Form.h"
#include "settings/SettingsStore.h"
#include "ui_frmOptions.h"

#include <QDialog>

class MP3EncoderX;
class VorbisEncoderX;
class WMAEncoderX;

/// The options: six pages, of which the chosen one is shown and enabled, and the four buttons under them.
///
/// Each page has its own file with what fills, loads, saves and resets it. Choosing an entry from code runs
/// the click rule of its list, so the order of the choices within these operations matters. The pages are the
/// only model: nothing reaches settings.ini or an encoder before Save or OK.
class frmOptions : public FormOf<QDialog>, private Ui::frmOptions
{
    Q_OBJECT

public:
    explicit frmOptions(const Desktop &desktop);

    /// Shows the stored options and returns when the window is closed. OK leaves the chosen values in the
    /// encoders; the caller loads the settings afterwards, however the window was closed.
    void ShowForm(MP3EncoderX &objMP3, WMAEncoderX &objWMA, VorbisEncoderX &objVorbis, QWidget *owner);

protected:
    void Form_Unload() override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    // frmOptions.cpp: the window, its buttons, what all pages share
    void addTabs();
    void tbsOptions_Click();
    void selectNextTab();
    void LoadOptionControls();
    bool ValidateBitRates();
    void cmdDefault_Click();
    void cmdSave_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
    void showInformation(const QString &text);
    /// The stored number. Failure 13 for a text that is none.
    double stored(const IniKey &key) const;
    void store(const IniKey &key, qint32 number) const;

    // frmOptions_Mp3.cpp
    void fillMp3Page();
    void loadMp3Page();
    void saveMp3Page() const;
    void resetMp3Page();
    void UpdateMP3Controls();
    bool ApplyMP3Settings();

    // frmOptions_Wma.cpp
    void fillWmaPage();
    void loadWmaPage();
    void saveWmaPage() const;
    void resetWmaPage();
    void cboBitRate_Click();
    qint16 GetWMABitRate() const;
    void UpdateWMAChannels(qint16 bitRate);
    void FillWMASampleRates(qint16 bitRate);
    bool hasWmaSampleRate();
    void ApplyWMASettings();

    // frmOptions_Ogg.cpp
    void fillOggPage();
    void loadOggPage();
    void saveOggPage() const;
    void resetOggPage();
    void chkUseAdvanced_Click();
    bool ApplyOGGSettings();
    /// The same rule has one wording for the start of OK and Save and another for the encoder.
    struct OggWords
    {
        QString nominalAboveMaximum;
        QString nominalBelowMinimum;
        QString minimumAboveMaximum;
    };
    bool validateOggBitRates(const OggWords &words);

    // frmOptions_Folders.cpp
    QLineEdit &folderBox(const Format &format) const;
    void loadFoldersPage();
    void saveFoldersPage() const;
    void resetFoldersPage();
    void pickFolder(QLineEdit &box);
    void cmdMP3Folder_Click() { pickFolder(*txtMP3Folder); }
    void cmdWAVFolder_Click() { pickFolder(*txtWAVDirectory); }
    void cmdWMAFolder_Click() { pickFolder(*txtWMADirectory); }
    void cmdVQFFolder_Click() { pickFolder(*txtVQFDirectory); }
    void cmdOGGFolder_Click() { pickFolder(*txtOGGDirectory); }

    // frmOptions_Appearance.cpp
    void fillPreview();
    void loadAppearancePage();
    void resetAppearancePage();
    void chkGridLine_Click();
    void cmdBackColor_Click();
    void cmdForeColor_Click();
    void cmdFont_Click();

    // frmOptions_Other.cpp
    void loadOtherPage();
    void saveOtherPage() const;
    void resetOtherPage();

    SettingsStore m_store;
    MP3EncoderX *m_objMP3 = nullptr;
    WMAEncoderX *m_objWMA = nullptr;
    VorbisEncoderX *m_objVorbis = nullptr;
};
