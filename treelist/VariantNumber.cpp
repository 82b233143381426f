#include "VariantNumber.h"

#include "TreeListError.h"

#include <cmath>

bool isNumeric(const QVariant &value) {
    bool ok = false;
    if (value.isValid() && value.typeId() != QMetaType::QVariantList)
        value.toDouble(&ok);
    return ok;
}

double toNumber(const QVariant &value) {
    if (!isNumeric(value))
        throw TreeListError(TreeListError::TypeMismatch);
    return value.toDouble();
}

qint32 toLong(const QVariant &value) {
    const double d = std::nearbyint(toNumber(value));
    // A double past the 64-bit range (or not a number) would not convert: it overflows as well.
    if (!(std::fabs(d) < 9.2e18))
        throw TreeListError(TreeListError::Overflow);
    return toInt32(static_cast<qint64>(d));
}
