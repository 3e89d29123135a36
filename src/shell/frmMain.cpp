#include "shell/frmMain.h"

#include "base/Deployment.h"
#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "base/Text.h"
#include "controls/ClockPanel.h"
#include "controls/HandCursor.h"
#include "platform/Dialogs.h"
#include "settings/WindowsVersion.h"
#include "shell/Commands.h"

#include <QHeaderView>

/// The drawings lie in a static library, which has to be asked for them.
static void loadIcons()
{
    Q_INIT_RESOURCE(icons);
}

frmMain::frmMain(const Desktop &desktop, MainWindowParts parts)
    : FormOf(desktop),
      m_parts(std::move(parts)),
      m_settings(desktop.paths),
      m_tracks((setupUi(this), *lvwTracks)),
      m_watch(
          *m_parts.CDRipperX1, m_discInfo, desktop.dialogs, this,
          {*cboDevices, *cboSpeeds, *lvwTracks, Timer1}, [this] { return m_sExtension; },
          [this] { m_offer.OfferDiscLookup(m_tracks.count()); }),
      m_sFolder(Formats::all().size()),
      m_windows(desktop, {this, m_parts, *this, *this, m_discInfo, m_settings, WindowsVersionName}),
      m_offer(
          {this, desktop.dialogs, m_settings}, [this] { return isVisible() && !Starting; },
          [this] { m_windows.showCddb(); })
{
    loadIcons();
    chkAll2 = new TickBox(lvwTracks->header());
    chkAll2->setObjectName(QStringLiteral("chkAll2"));
    chkAll2->setAccessibleName(QStringLiteral("Check/Uncheck All"));
    fitColumns();
    addFormats();
    addStatusPanels();
    Timer1.setObjectName(QStringLiteral("Timer1"));
    Timer1.setParent(this);
    Timer1.setInterval(200);
    makeCommands();
    attachHandlers();
    Timer1.start();
}

frmMain::~frmMain() = default;

/// Columns as wide as the list's font asks for, and the box over the check column.
void frmMain::fitColumns()
{
    const int character = lvwTracks->fontMetrics().averageCharWidth() + 1;
    const int widths[] = {0, 6, 44, 13, 13, 12, 10}; // in characters; the first column holds the box alone
    QHeaderView *header = lvwTracks->header();
    header->setMinimumSectionSize(chkAll2->sizeHint().width() + character);
    for (int column = 0; column < lvwTracks->columnCount(); ++column)
        header->resizeSection(column, std::max(header->minimumSectionSize(), widths[column] * character));
    chkAll2->setGeometry(
        QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, chkAll2->sizeHint(),
                            QRect(0, 0, header->sectionSize(0), header->sizeHint().height())));
}

/// An option button for each format, between the commands of the folder and the start.
void frmMain::addFormats()
{
    QWidget *before = cmdIE;
    for (const Format &format : Formats::all()) {
        auto *const button = new OptionButton;
        button->setObjectName(QStringLiteral("rdFormat_%1").arg(rdFormat.size()));
        button->setText(format.caption);
        formatLayout->addWidget(button);
        setTabOrder(before, button);
        rdFormat.push_back(button);
        before = button;
    }
    setTabOrder(before, cmdStartRipping);
    rdFormat.front()->setChecked(true);
}

void frmMain::addStatusPanels()
{
    const auto panel = [this](QLabel *label, int index, int stretch) {
        label->setObjectName(QStringLiteral("StatusBar1_%1").arg(index));
        StatusBar1->addWidget(label, stretch);
    };
    panel(new QLabel(QStringLiteral("Tonelift - Convert CD to MP3, WAV, WMA, VQF, OGG Vorbis")), 1, 0);
    panel(new QLabel, 2, 1);
    panel(new ClockPanel(ClockPanel::Time), 3, 0);
    panel(new ClockPanel(ClockPanel::Date), 4, 0);
}

void frmMain::attachHandlers()
{
    attach(&Timer1, &QTimer::timeout, [this] { m_watch.Timer1_Timer(); });
    attach(m_offer.timer(), &QTimer::timeout, [this] { m_offer.Timer3_Timer(); });
    attachClick(cboDevices, [this] { m_watch.cboDevices_Click(); });
    attachClick(cboSpeeds, [this] { m_watch.cboSpeeds_Click(); });
    attachClick(chkAll, [this] { checkBoxes_Click(*chkAll, *chkAll2); });
    attachClick(chkAll2, [this] { checkBoxes_Click(*chkAll2, *chkAll); });
    for (std::size_t index = 0; index < rdFormat.size(); ++index)
        attachClick(rdFormat[index], [this, index] { rdFormat_Click(index); });
    attach(lvwTracks, &ReportListView::listDoubleClicked, [this] { lvwTracks_DblClick(); });
    attach(cmdFolder, &QPushButton::clicked, [this] { cmdFolder_Click(); });
    attach(cmdIE, &QPushButton::clicked, [this] { cmdIE_Click(); });
    attach(cmdStartRipping, &QPushButton::clicked, [this] { StartRipping(); });
}

void frmMain::Form_Load()
{
    const SkipFailures skip;
    skip([&] { m_discInfo = DiscInfo(); });
    skip([&] { m_sExtension = QStringLiteral(".mp3"); });
    skip([&] { setWindowTitle(ProductName + QStringLiteral(" - Version ") + Deployment::ProductVersion); });
    qint16 drives = 0;
    skip([&] { drives = m_parts.CDRipperX1->DriveCount(); });
    for (qint16 drive = 0; drive < drives; ++drive) {
        skip([&] {
            const CDRipperX &engine = *m_parts.CDRipperX1;
            cboDevices->addEntry(engine.DriveAddress(drive) + QStringLiteral(": ") +
                                 engine.DriveMaker(drive) + u' ' + engine.DriveModel(drive));
        });
    }
    if (drives > 0)
        skip([&] { cboDevices->setListIndex(0); });
    skip([&] { LoadMainSettings(); });
    skip([&] { Starting = true; });
    skip([&] { WindowsVersionName = GetWindowsVersionName(desktop().systemVersion); });
    const bool isVista =
        skip.condition([&] { return WindowsVersionName.indexOf(QStringLiteral("Vista")) >= 5; });
    if (!isVista)
        skip([&] { control<QAction>(QStringLiteral("mnuHelpSub_2"))->setVisible(false); });
    else if (!IKnowVistaNotice)
        skip([&] { m_windows.showVistaNotice(); });
    skip([&] { Starting = false; });
    skip([&] { m_iEditIndex = 1; });
    for (QWidget *control :
         std::initializer_list<QWidget *>{chkAll2, chkAll, cmdFolder, cmdIE, cmdStartRipping})
        skip([&] { SetHandCursor(control); });
}

void frmMain::askToClose()
{
    const BoxAnswer answer =
        desktop().dialogs.messageBox(this, {.text = QStringLiteral("Are you sure to close this program?"),
                                            .icon = BoxIcon::Question,
                                            .buttons = BoxButtons::YesNo,
                                            .title = QStringLiteral("Close the program")});
    if (answer == BoxAnswer::Yes)
        unload();
}
