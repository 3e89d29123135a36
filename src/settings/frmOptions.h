#pragma once

#include "platform/Form.h"
#include "settings/SettingsStore.h"
#include "ui_frmOptions.h"

#include <QDialog>
#include <QList>

class MP3EncoderX;
class OptionsMp3;
class OptionsOgg;
class OptionsPage;
class OptionsWma;
class VorbisEncoderX;
class WMAEncoderX;

/// The options: six pages, of which the chosen one is shown and enabled, and the four buttons under them.
class frmOptions : public FormOf<QDialog>, private Ui::frmOptions
{
    Q_OBJECT

public:
    explicit frmOptions(const Desktop &desktop);

    /// Shows the stored options and returns when the window is closed. OK leaves the chosen values in the
    /// encoders, which outlive the window; the caller loads the settings afterwards, however the window was
    /// closed.
    void ShowForm(MP3EncoderX &objMP3, WMAEncoderX &objWMA, VorbisEncoderX &objVorbis, QWidget *owner);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Tab
    {
        QString caption, key, tip;
    };
    template <typename Page>
    Page *addPage(const Tab &tab);

    void tbsOptions_Click();
    void selectNextTab();
    bool isValid() const;
    void cmdDefault_Click();
    void cmdSave_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    const SettingsStore m_store;
    QList<OptionsPage *> m_pages; ///< in the order of the tabs
    OptionsMp3 *m_mp3;
    OptionsWma *m_wma;
    OptionsOgg *m_ogg;
};
