#include "settings/frmOptions.h"

#include "base/RunTimeFailure.h"
#include "platform/Dialogs.h"
#include "settings/OptionsAppearance.h"
#include "settings/OptionsFolders.h"
#include "settings/OptionsMp3.h"
#include "settings/OptionsOgg.h"
#include "settings/OptionsOther.h"
#include "settings/OptionsWma.h"

#include <QKeyEvent>

frmOptions::frmOptions(const Desktop &desktop) : FormOf(desktop), m_store(desktop.paths)
{
    setupUi(this);
    setCancelButton(cmdCancel);
    tbsOptions->setExpanding(false);
    m_mp3 = addPage<OptionsMp3>(
        {QStringLiteral("MP3"), QStringLiteral("MP3"), QStringLiteral("Set Options for MP3")});
    m_wma = addPage<OptionsWma>(
        {QStringLiteral("WMA"), QStringLiteral("WMA"), QStringLiteral("Set Options for WMA")});
    m_ogg = addPage<OptionsOgg>(
        {QStringLiteral("OGG Vorbis"), QStringLiteral("OGG"), QStringLiteral("Set Options for OGG")});
    addPage<OptionsFolders>({QStringLiteral("Output Folders"), QStringLiteral("Other"),
                             QStringLiteral("Set Options for Output Folder")});
    addPage<OptionsAppearance>(
        {QStringLiteral("Appearance"), QStringLiteral("Advanced"), QStringLiteral("Set Advanced Options")});
    addPage<OptionsOther>({QStringLiteral("Other"), {}, {}});
    // The buttons come behind the pages, whose controls were added behind them.
    QWidget *last = previousInFocusChain();
    for (QPushButton *button : {cmdDefault, cmdSave, cmdOK, cmdCancel}) {
        setTabOrder(last, button);
        last = button;
    }
    attach(tbsOptions, &QTabBar::currentChanged, [this] { tbsOptions_Click(); });
    attach(cmdDefault, &QPushButton::clicked, [this] { cmdDefault_Click(); });
    attach(cmdSave, &QPushButton::clicked, [this] { cmdSave_Click(); });
    attach(cmdOK, &QPushButton::clicked, [this] { cmdOK_Click(); });
    attach(cmdCancel, &QPushButton::clicked, [this] { cmdCancel_Click(); });
    centerOnScreen();
}

template <typename Page>
Page *frmOptions::addPage(const Tab &tab)
{
    auto *const page = new Page(*this, m_store);
    stkOptions->addWidget(page);
    m_pages.append(page);
    const int index = tbsOptions->addTab(tab.caption);
    tbsOptions->setTabData(index, tab.key);
    tbsOptions->setTabToolTip(index, tab.tip);
    return page;
}

void frmOptions::ShowForm(MP3EncoderX &objMP3, WMAEncoderX &objWMA, VorbisEncoderX &objVorbis, QWidget *owner)
{
    m_mp3->fill(objMP3);
    m_wma->fill(objWMA);
    m_ogg->fill(objVorbis);
    for (OptionsPage *page : m_pages)
        page->load();
    showModal(owner);
}

/// The chosen page is enabled before it is shown, so that the focus can move into it.
void frmOptions::tbsOptions_Click()
{
    const int chosen = tbsOptions->currentIndex();
    m_pages[chosen]->setEnabled(true);
    stkOptions->setCurrentIndex(chosen);
    for (int i = 0; i < m_pages.size(); ++i)
        m_pages[i]->setEnabled(i == chosen);
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

void frmOptions::cmdDefault_Click()
{
    for (OptionsPage *page : m_pages)
        page->reset();
}

bool frmOptions::isValid() const
{
    return m_mp3->isValid() && m_ogg->isValid() && m_wma->isValid();
}

void frmOptions::cmdSave_Click()
{
    if (!isValid())
        return;
    SettingsStore::Transaction save(m_store);
    for (const OptionsPage *page : m_pages)
        page->save();
    try {
        save.commit();
    } catch (const RunTimeFailure &failure) {
        desktop().dialogs.messageBox(
            this, {.text = QStringLiteral("The settings can't be saved: %1.").arg(failure.reason()),
                   .icon = BoxIcon::Exclamation});
        return;
    }
    desktop().dialogs.messageBox(this, {.text = QStringLiteral("Settings are saved sucessfully!")});
}

void frmOptions::cmdOK_Click()
{
    if (!isValid() || !m_mp3->apply())
        return;
    m_wma->apply();
    if (!m_ogg->apply())
        return;
    cmdSave_Click();
    unload();
}

void frmOptions::cmdCancel_Click()
{
    unload();
}
