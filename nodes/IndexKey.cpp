#include "IndexKey.h"

#include <cmath>
#include <limits>

IndexKeyKind indexKeyKind(const QVariant &value) {
    if (!value.isValid())
        return IndexKeyKind::Missing;
    switch (value.typeId()) {
    case QMetaType::QString:
        return IndexKeyKind::Key;
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return IndexKeyKind::Position;
    default:
        return IndexKeyKind::Invalid;
    }
}

std::optional<qint32> indexKeyPosition(const QVariant &value) {
    if (indexKeyKind(value) != IndexKeyKind::Position)
        return std::nullopt;
    const double d = std::nearbyint(value.toDouble()); // default rounding: half to even
    if (!std::isfinite(d) || d < std::numeric_limits<qint32>::min() ||
        d > std::numeric_limits<qint32>::max())
        return std::nullopt;
    return static_cast<qint32>(d);
}

bool isEmptyText(const QVariant &value) {
    if (!value.isValid())
        return true;
    return value.typeId() == QMetaType::QString && value.toString().isEmpty();
}

QString variantText(const QVariant &value) {
    if (!value.isValid())
        return QString();
    return value.toString();
}
