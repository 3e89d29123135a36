#pragma once

#include <QLineEdit>

/// A read-only text box that works like a link, and looks so by the skin. It isn't on the way of the Tab key:
/// whoever gets the focus from it would send that key back into it.
class LinkText : public QLineEdit
{
    Q_OBJECT

public:
    explicit LinkText(QWidget *parent = nullptr);

    QSize sizeHint() const override;

Q_SIGNALS:
    void clicked();
    void gotFocus();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};
