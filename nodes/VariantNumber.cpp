#include "VariantNumber.h"

#include "TreeListError.h"

#include <cmath>

// The number a value holds or reads as. The common numeric types are read directly: a hit test
// converts its two coordinates on every mouse move.
std::optional<double> numberIn(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::Int:
        return double(*static_cast<const int *>(value.constData()));
    case QMetaType::Double:
        return *static_cast<const double *>(value.constData());
    case QMetaType::Float:
        return double(*static_cast<const float *>(value.constData()));
    case QMetaType::LongLong:
        return double(*static_cast<const qlonglong *>(value.constData()));
    case QMetaType::UnknownType:
    case QMetaType::QVariantList:
        return std::nullopt;
    default: {
        bool ok = false;
        const double d = value.toDouble(&ok);
        return ok ? std::optional<double>(d) : std::nullopt;
    }
    }
}

bool isNumeric(const QVariant &value) {
    return numberIn(value).has_value();
}

double toNumber(const QVariant &value) {
    const std::optional<double> number = numberIn(value);
    if (!number)
        throw TreeListError(TreeListError::TypeMismatch);
    return *number;
}

qint32 toLong(const QVariant &value) {
    return roundToLong(toNumber(value));
}

qint32 roundToLong(double number) {
    // Whole numbers in range, the usual case (pixel coordinates), need no rounding.
    if (std::fabs(number) < 2147483648.0) {
        const auto whole = static_cast<qint32>(number);
        if (whole == number)
            return whole;
    }
    const double d = std::nearbyint(number);
    // A double past the 64-bit range (or not a number) would not convert: it overflows as well.
    if (!(std::fabs(d) < 9.2e18))
        throw TreeListError(TreeListError::Overflow);
    return toInt32(static_cast<qint64>(d));
}
