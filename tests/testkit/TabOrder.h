#pragma once

#include <QStringList>
#include <QWidget>

/// The names of a window's controls in the order in which the Tab key goes through them, those on pages that
/// aren't shown included.
inline QStringList tabOrder(const QWidget &window)
{
    QStringList names;
    for (const QWidget *next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
        if (next->focusPolicy() & Qt::TabFocus && !next->isHidden() && !next->objectName().isEmpty())
            names.append(next->objectName());
    }
    return names;
}
