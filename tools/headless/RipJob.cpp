#include "headless/RipJob.h"

#include "controls/OptionButton.h"
#include "controls/ReportListView.h"
#include "controls/TickBox.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>

namespace {

constexpr int FileNameColumn = 2;

template <typename Control>
Control &control(QWidget &window, const QString &name)
{
    auto *found = window.findChild<Control *>(name);
    if (!found)
        qFatal("There is no control %s", qPrintable(name));
    return *found;
}

/// A box that asks is refused, one that tells is closed.
QAbstractButton *answerOf(const QMessageBox &box)
{
    QAbstractButton *no = box.button(QMessageBox::No);
    return no ? no : box.buttons().value(0);
}

} // namespace

RipJob::RipJob(QWidget &mainWindow, bool withPicture) : m_window(mainWindow), m_pictureWanted(withPicture)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(5);
    connect(&m_timer, &QTimer::timeout, this, &RipJob::look);
    m_timer.start();
}

int RipJob::waitForTracks(int milliseconds)
{
    const auto &rows = control<ReportListView>(m_window, QStringLiteral("lvwTracks"));
    QElapsedTimer clock;
    clock.start();
    while (rows.rowCount() == 0 && clock.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return rows.rowCount();
}

void RipJob::choose(int format)
{
    control<OptionButton>(m_window, QStringLiteral("rdFormat_%1").arg(format)).click();
    auto &all = control<TickBox>(m_window, QStringLiteral("chkAll"));
    if (all.isTicked()) // tracks that came since are unchecked
        all.click();
    all.click();
}

void RipJob::enterTitles(const QString &album, const QString &artist, const QString &year)
{
    m_typing = {{QStringLiteral("txtAlbum"), album},
                {QStringLiteral("txtArtist"), artist},
                {QStringLiteral("txtYear"), year}};
    control<QAction>(m_window, QStringLiteral("Toolbar1_2")).trigger();
}

void RipJob::rip()
{
    m_worked = 0;
    m_clock.invalidate();
    control<QPushButton>(m_window, QStringLiteral("cmdStartRipping")).click();
}

QStringList RipJob::files() const
{
    const auto &rows = control<ReportListView>(m_window, QStringLiteral("lvwTracks"));
    const QString folder = control<QLineEdit>(m_window, QStringLiteral("txtOutputDirectory")).text();
    QStringList files;
    for (int row = 1; row <= rows.rowCount(); ++row) {
        if (rows.isChecked(row))
            files += folder + rows.text(row, FileNameColumn);
    }
    return files;
}

void RipJob::look()
{
    QWidget *const window = QApplication::activeModalWidget();
    if (auto *box = qobject_cast<QMessageBox *>(window)) {
        if (box->text() == QStringLiteral("Audio CD Ripping Completed!"))
            m_worked = m_clock.nsecsElapsed();
        m_boxes += box->text();
        answerOf(*box)->click();
    } else if (window && window->objectName() == QStringLiteral("frmTrack")) {
        for (const auto &[name, text] : m_typing)
            control<QLineEdit>(*window, name).setText(text);
        control<QPushButton>(*window, QStringLiteral("OKButton")).click();
    } else if (window && window->objectName() == QStringLiteral("frmExtract")) {
        const bool atWork =
            !control<QPlainTextEdit>(*window, QStringLiteral("txtStatus")).toPlainText().isEmpty();
        if (atWork && !m_clock.isValid())
            m_clock.start();
        const auto &files = control<QProgressBar>(*window, QStringLiteral("prgTotal"));
        if (m_pictureWanted && atWork && files.value() >= files.maximum() / 2) {
            m_pictureWanted = false;
            m_picture = window->grab();
        }
    }
}
