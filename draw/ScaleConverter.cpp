#include "ScaleConverter.h"

#include "TreeListError.h"

#include <cmath>

namespace {

// Units of a scale mode in one inch.
double unitsPerInch(qint16 scale, bool vertical, double pixelsPerInch) {
    switch (scale) {
    case vbUser:
    case vbTwips:
        return 1440.0;
    case vbPoints:
        return 72.0;
    case vbPixels:
        return pixelsPerInch;
    case vbCharacters:
        return vertical ? 1440.0 / 240.0 : 1440.0 / 120.0;
    case vbInches:
        return 1.0;
    case vbMillimeters:
        return 25.4;
    case vbCentimeters:
        return 2.54;
    case vbHimetric:
        return 2540.0;
    default:
        throw TreeListError(TreeListError::InvalidArgument);
    }
}

} // namespace

double convertScale(double value, qint16 fromScale, qint16 toScale, bool vertical,
                    double pixelsPerInch) {
    const double from = unitsPerInch(fromScale, vertical, pixelsPerInch);
    const double to = unitsPerInch(toScale, vertical, pixelsPerInch);
    return from == to ? value : value * to / from;
}

ScaleConverter::ScaleConverter(double pixelsPerInch)
    : m_pixelsPerInch(pixelsPerInch > 0.0 && std::isfinite(pixelsPerInch) ? pixelsPerInch : 96.0) {}

double ScaleConverter::ScaleX(double value, qint16 fromScale, qint16 toScale) const {
    return convertScale(value, fromScale, toScale, false, m_pixelsPerInch);
}

double ScaleConverter::ScaleY(double value, qint16 fromScale, qint16 toScale) const {
    return convertScale(value, fromScale, toScale, true, m_pixelsPerInch);
}
