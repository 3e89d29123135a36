#pragma once

#include <QLineEdit>
#include <QObject>

/// Lets a text box take digits alone from the keyboard: the key of any other character is swallowed, and so
/// is the pasting of a text that holds any. Backspace and the keys that move about work as ever. Text set by
/// code is left as it is.
class DigitsOnly : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the box and goes with it.
    explicit DigitsOnly(QLineEdit *box);

    bool eventFilter(QObject *watched, QEvent *event) override;
};
