#include "controls/ClockPanel.h"

#include <QDateTime>
#include <QLocale>

ClockPanel::ClockPanel(Content content, QWidget *parent) : QLabel(parent), m_content(content)
{
    m_timer.setInterval(1000);
    connect(&m_timer, &QTimer::timeout, this, &ClockPanel::showPresent);
    m_timer.start();
    showPresent();
}

void ClockPanel::showPresent()
{
    const QDateTime now = QDateTime::currentDateTime();
    setText(m_content == Time ? QLocale().toString(now.time(), QLocale::ShortFormat)
                              : QLocale().toString(now.date(), QLocale::ShortFormat));
}
