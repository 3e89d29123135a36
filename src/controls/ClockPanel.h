#pragma once

#include <QLabel>
#include <QTimer>

/// A status bar's panel that shows the present time or date and keeps itself up to date.
class ClockPanel : public QLabel
{
    Q_OBJECT

public:
    enum Content { Time, Date };

    ClockPanel(Content content, QWidget *parent = nullptr);

private:
    void showPresent();

    Content m_content;
    QTimer m_timer;
};
