#include "TreeListError.h"

#include <limits>

TreeListError::TreeListError(int number, const QString &description)
    : std::runtime_error(description.toStdString()), m_number(number), m_description(description) {}

TreeListError::TreeListError(Number number) : TreeListError(number, standardText(number)) {}

QString TreeListError::standardText(int number) {
    switch (number) {
    case InvalidArgument:
        return QStringLiteral("Invalid procedure call or argument");
    case Overflow:
        return QStringLiteral("Overflow");
    case OutOfMemory:
        return QStringLiteral("Out of memory");
    case DivisionByZero:
        return QStringLiteral("Division by zero");
    case InternalError:
        return QStringLiteral("Internal error");
    case TypeMismatch:
        return QStringLiteral("Type mismatch");
    case DuplicateKey:
        return QStringLiteral("This key is already associated with an element of this collection");
    default:
        return QString();
    }
}

qint16 toInt16(qint64 value) {
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        throw TreeListError(TreeListError::Overflow);
    return static_cast<qint16>(value);
}

qint32 toInt32(qint64 value) {
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        throw TreeListError(TreeListError::Overflow);
    return static_cast<qint32>(value);
}

double divide(double dividend, double divisor) {
    if (divisor == 0)
        throw TreeListError(dividend == 0 ? TreeListError::Overflow
                                          : TreeListError::DivisionByZero);
    return dividend / divisor;
}
