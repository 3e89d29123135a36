#pragma once

#include <QToolBar>

/// A tool bar whose buttons are flat (style 1) or standard, raised ones (style 0).
class CommandBar : public QToolBar
{
    Q_OBJECT

public:
    enum Style { Standard = 0, Flat = 1 };

    explicit CommandBar(QWidget *parent = nullptr);

    qint32 barStyle() const { return m_style; }
    /// Failure 5 for a number that is no style.
    void setBarStyle(qint32 style);

protected:
    void actionEvent(QActionEvent *event) override;

private:
    void showStyle();

    qint32 m_style = Flat;
};
