#include "controls/DigitsOnly.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <algorithm>

namespace {

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool hasOtherThanDigits(const QString &text)
{
    return !std::all_of(text.begin(), text.end(), isDigit);
}

} // namespace

DigitsOnly::DigitsOnly(QLineEdit *box) : QObject(box)
{
    box->setInputMethodHints(box->inputMethodHints() | Qt::ImhDigitsOnly);
    box->installEventFilter(this);
}

bool DigitsOnly::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->matches(QKeySequence::Paste))
        return hasOtherThanDigits(QGuiApplication::clipboard()->text());
    const QString text = key->text();
    return !text.isEmpty() && text[0].isPrint() && hasOtherThanDigits(text);
}
