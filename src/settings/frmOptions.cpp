#include "settings/frmOptions.h"

#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "platform/Dialogs.h"
#include "settings/ListLook.h"

#include <QKeyEvent>

frmOptions::frmOptions(const Desktop &desktop) : FormOf(desktop), m_store(desktop.paths)
{
    setupUi(this);
    setCancelButton(cmdCancel);
    addTabs();
    attach(tbsOptions, &QTabBar::currentChanged, [this] { tbsOptions_Click(); });
    attach(cmdDefault, &QPushButton::clicked, [this] { cmdDefault_Click(); });
    attach(cmdSave, &QPushButton::clicked, [this] { cmdSave_Click(); });
    attach(cmdOK, &QPushButton::clicked, [this] { cmdOK_Click(); });
    attach(cmdCancel, &QPushButton::clicked, [this] { cmdCancel_Click(); });

    attachClick(optCBR, [this] { UpdateMP3Controls(); });
    attachClick(optVBR, [this] { UpdateMP3Controls(); });
    attachClick(cboBitRate, [this] { cboBitRate_Click(); });
    attachClick(optStereo, [this] { FillWMASampleRates(GetWMABitRate()); });
    attachClick(optMono, [this] { FillWMASampleRates(GetWMABitRate()); });
    attachClick(chkUseAdvanced, [this] { chkUseAdvanced_Click(); });
    attach(cmdMP3Folder, &QPushButton::clicked, [this] { cmdMP3Folder_Click(); });
    attach(cmdWAVFolder, &QPushButton::clicked, [this] { cmdWAVFolder_Click(); });
    attach(cmdWMAFolder, &QPushButton::clicked, [this] { cmdWMAFolder_Click(); });
    attach(cmdVQFFolder, &QPushButton::clicked, [this] { cmdVQFFolder_Click(); });
    attach(cmdOGGFolder, &QPushButton::clicked, [this] { cmdOGGFolder_Click(); });
    attachClick(chkGridLine, [this] { chkGridLine_Click(); });
    attach(cmdBackColor, &QPushButton::clicked, [this] { cmdBackColor_Click(); });
    attach(cmdForeColor, &QPushButton::clicked, [this] { cmdForeColor_Click(); });
    attach(cmdFont, &QPushButton::clicked, [this] { cmdFont_Click(); });
    centerOnScreen();
}

void frmOptions::addTabs()
{
    struct Tab
    {
        QString caption, key, tip;
    };
    const Tab tabs[] = {
        {QStringLiteral("MP3"), QStringLiteral("MP3"), QStringLiteral("Set Options for MP3")},
        {QStringLiteral("WMA"), QStringLiteral("WMA"), QStringLiteral("Set Options for WMA")},
        {QStringLiteral("OGG Vorbis"), QStringLiteral("OGG"), QStringLiteral("Set Options for OGG")},
        {QStringLiteral("Output Folders"), QStringLiteral("Other"),
         QStringLiteral("Set Options for Output Folder")},
        {QStringLiteral("Appearance"), QStringLiteral("Advanced"), QStringLiteral("Set Advanced Options")},
        {QStringLiteral("Other"), {}, {}},
    };
    tbsOptions->setExpanding(false);
    for (const Tab &tab : tabs) {
        const int index = tbsOptions->addTab(tab.caption);
        tbsOptions->setTabData(index, tab.key);
        tbsOptions->setTabToolTip(index, tab.tip);
    }
}

void frmOptions::ShowForm(MP3EncoderX &objMP3, WMAEncoderX &objWMA, VorbisEncoderX &objVorbis, QWidget *owner)
{
    m_objMP3 = &objMP3;
    fillMp3Page();
    m_objWMA = &objWMA;
    fillWmaPage();
    m_objVorbis = &objVorbis;
    fillOggPage();
    fillPreview();
    LoadOptionControls();
    showModal(owner);
}

void frmOptions::Form_Unload()
{
    m_objMP3 = nullptr;
    m_objWMA = nullptr;
    m_objVorbis = nullptr;
}

/// The chosen page is enabled before it is shown, so that the focus can move into it.
void frmOptions::tbsOptions_Click()
{
    const int chosen = tbsOptions->currentIndex();
    stkOptions->widget(chosen)->setEnabled(true);
    stkOptions->setCurrentIndex(chosen);
    for (int i = 0; i < tbsOptions->count(); ++i)
        stkOptions->widget(i)->setEnabled(i == chosen);
}

void frmOptions::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::ControlModifier)
        guarded([this] { selectNextTab(); });
    else
        FormOf::keyPressEvent(event);
}

void frmOptions::selectNextTab()
{
    tbsOptions->setCurrentIndex((tbsOptions->currentIndex() + 1) % tbsOptions->count());
}

void frmOptions::LoadOptionControls()
{
    loadMp3Page();
    loadWmaPage();
    loadOggPage();
    loadFoldersPage();
    loadAppearancePage();
    loadOtherPage();
}

/// The rates count whether their lists are enabled or not. The MP3 limits must differ, the Vorbis ones may be
/// equal.
bool frmOptions::ValidateBitRates()
{
    if (cboVBRMax->chosenNumber() <= cboVBRMin->chosenNumber()) {
        showInformation(QStringLiteral("Minimum MP3 Bit Rate must be less than the Maximum MP3 Bit Rate."));
        return false;
    }
    return validateOggBitRates(
        {.nominalAboveMaximum =
             QStringLiteral("Nominal OGG Vorbis Bit Rate must be lower than the Maximum OGG Vorbis Bit Rate"),
         .nominalBelowMinimum = QStringLiteral(
             "Nominal OGG Vorbis Bit Rate must be higher than the Minimum OGG Vorbis Bit Rate"),
         .minimumAboveMaximum = QStringLiteral(
             "The Minimum OGG Vorbis Bit Rate must be lower than the Maximum OGG Vorbis Bit Rate")});
}

void frmOptions::cmdDefault_Click()
{
    resetMp3Page();
    resetWmaPage();
    resetOggPage();
    resetFoldersPage();
    resetAppearancePage();
    resetOtherPage();
}

void frmOptions::cmdSave_Click()
{
    if (!ValidateBitRates() || !hasWmaSampleRate())
        return;
    SettingsStore::Transaction save(m_store);
    saveMp3Page();
    saveWmaPage();
    saveOggPage();
    saveFoldersPage();
    SaveListLook(m_store, *lvwTracks);
    saveOtherPage();
    try {
        save.commit();
    } catch (const RunTimeFailure &failure) {
        desktop().dialogs.messageBox(
            this, {.text = QStringLiteral("The settings can't be saved: %1.").arg(failure.reason()),
                   .icon = BoxIcon::Exclamation});
        return;
    }
    showInformation(QStringLiteral("Settings are saved sucessfully!"));
}

void frmOptions::cmdOK_Click()
{
    if (!ValidateBitRates() || !hasWmaSampleRate() || !ApplyMP3Settings())
        return;
    ApplyWMASettings();
    if (!ApplyOGGSettings())
        return;
    cmdSave_Click();
    unload();
}

void frmOptions::cmdCancel_Click()
{
    unload();
}

void frmOptions::showInformation(const QString &text)
{
    desktop().dialogs.messageBox(this, {.text = text});
}

double frmOptions::stored(const IniKey &key) const
{
    return toNumber(m_store.read(key));
}

void frmOptions::store(const IniKey &key, qint32 number) const
{
    m_store.write(key, QString::number(number));
}
