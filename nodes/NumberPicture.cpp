#include "NumberPicture.h"

#include <cmath>

namespace {

bool isDigitPlace(QChar c) {
    return c == u'0' || c == u'#';
}

// The integer and fraction digits of |value| rounded to `places` fraction digits.
std::pair<QString, QString> roundedDigits(double value, int places) {
    const double magnitude = std::fabs(value);
    const double scale = std::pow(10.0, places);
    // Below 2^53 the scaled value is exact enough to round as the picture asks; beyond, the
    // digits come from the shortest exact decimal form and no place is left to round.
    if (std::isfinite(magnitude) && magnitude * scale < 9.0e15) {
        const auto scaled = static_cast<qint64>(std::floor(magnitude * scale + 0.5));
        const auto unit = static_cast<qint64>(scale);
        QString fraction = QString::number(scaled % unit).rightJustified(places, u'0');
        if (places == 0)
            fraction.clear();
        return {QString::number(scaled / unit), fraction};
    }
    const QString fixed = QString::number(magnitude, 'f', places);
    const qsizetype point = fixed.indexOf(u'.');
    return point < 0 ? std::pair{fixed, QString()}
                     : std::pair{fixed.left(point), fixed.mid(point + 1)};
}

} // namespace

QString formatNumber(double value, const QString &picture) {
    // The digit places are one run of "0", "#" and at most one ".": what is around it is text.
    qsizetype begin = 0;
    while (begin < picture.size() && !isDigitPlace(picture[begin]) && picture[begin] != u'.')
        ++begin;
    qsizetype end = begin;
    bool point = false;
    while (end < picture.size() &&
           (isDigitPlace(picture[end]) || (picture[end] == u'.' && !point))) {
        point = point || picture[end] == u'.';
        ++end;
    }
    const QString places = picture.mid(begin, end - begin);
    const qsizetype pointAt = places.indexOf(u'.');
    const QString integerPlaces = pointAt < 0 ? places : places.left(pointAt);
    const QString fractionPlaces = pointAt < 0 ? QString() : places.mid(pointAt + 1);

    auto [integer, fraction] = roundedDigits(value, static_cast<int>(fractionPlaces.size()));
    const qsizetype firstZero = integerPlaces.indexOf(u'0');
    const qsizetype integerShown = firstZero < 0 ? 0 : integerPlaces.size() - firstZero;
    if (integer == u"0" && integerShown == 0)
        integer.clear();
    integer = integer.rightJustified(integerShown, u'0');
    const qsizetype fractionShown = fractionPlaces.lastIndexOf(u'0') + 1;
    while (fraction.size() > fractionShown && fraction.endsWith(u'0'))
        fraction.chop(1);

    // A number that rounds to zero under the picture shows no sign.
    const auto allZeros = [](const QString &digits) { return digits.count(u'0') == digits.size(); };
    const bool negative = value < 0 && !(allZeros(integer) && allZeros(fraction));
    QString result = picture.left(begin);
    if (negative)
        result += u'-';
    result += integer;
    if (pointAt >= 0)
        result += u'.' + fraction;
    return result + picture.mid(end);
}
