#include "base/Numbers.h"

#include "base/RunTimeFailure.h"
#include "base/Text.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

double roundHalfToEven(double value)
{
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest < 0.5)
        return below;
    if (rest > 0.5)
        return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <typename Integer>
Integer toInteger(double value)
{
    const double rounded = roundHalfToEven(value);
    using Limits = std::numeric_limits<Integer>;
    if (!(rounded >= Limits::min() && rounded <= Limits::max()))
        throw RunTimeFailure(RunTimeFailure::Overflow);
    return static_cast<Integer>(rounded);
}

} // namespace

qint16 toInt16(double value)
{
    return toInteger<qint16>(value);
}

qint32 toInt32(double value)
{
    return toInteger<qint32>(value);
}

double toNumber(const QString &text)
{
    const QString number = trimBlanks(text);
    // QString::toDouble is too generous: it also reads "inf", "nan" and white space that isn't a blank.
    const auto belongsToNumber = [](QChar c) {
        return (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.' || c == u'e' || c == u'E';
    };
    bool ok = !number.isEmpty() && std::all_of(number.begin(), number.end(), belongsToNumber);
    const double value = ok ? QLocale::c().toDouble(number, &ok) : 0.0;
    if (std::isinf(value))
        throw RunTimeFailure(RunTimeFailure::Overflow);
    if (!ok)
        throw RunTimeFailure(RunTimeFailure::TypeMismatch);
    return value;
}

qint16 toInt16(const QString &text)
{
    return toInt16(toNumber(text));
}

qint32 toInt32(const QString &text)
{
    return toInt32(toNumber(text));
}

bool toYesNo(const QString &text)
{
    const QString word = trimBlanks(text);
    if (word.compare(u"True", Qt::CaseInsensitive) == 0)
        return true;
    if (word.compare(u"False", Qt::CaseInsensitive) == 0)
        return false;
    return toNumber(word) != 0;
}

QString yesNoText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString numberText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString twoDigits(int value)
{
    const QString digits = QString::number(std::abs(value)).rightJustified(2, u'0');
    return value < 0 ? u'-' + digits : digits;
}

double divide(double dividend, double divisor)
{
    if (divisor == 0)
        throw RunTimeFailure(RunTimeFailure::DivisionByZero);
    return dividend / divisor;
}
