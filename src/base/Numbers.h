#pragma once

#include <QString>
#include <QtGlobal>

/// Number rules of the whole program: halves go to the even neighbour, conversions are checked.

/// `value` as the nearest whole number, a half going to the even neighbour. Failure 6 where it doesn't fit.
qint16 toInt16(double value);
qint32 toInt32(double value);

/// The number that a text holds: blanks around it, a sign, decimals and an exponent are accepted, the decimal
/// sign is the point. Failure 13 for anything else, 6 for a number that doesn't fit.
double toNumber(const QString &text);
qint16 toInt16(const QString &text);
qint32 toInt32(const QString &text);

/// "True" and "False" in any letter case, or a number, of which only 0 is false. Failure 13 for anything
/// else.
bool toYesNo(const QString &text);

/// "True" or "False".
QString yesNoText(bool value);

/// A number with the fewest digits that tell it, the point as decimal sign: "8.25", "9".
QString numberText(double value);

/// The number format "0#": at least two digits.
QString twoDigits(int value);

/// `dividend` / `divisor`, failure 11 where the divisor is 0.
double divide(double dividend, double divisor);
