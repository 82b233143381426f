#pragma once
// Numbers passed as QVariant, the way the control's Variant arguments take them: any numeric
// type, a bool, or text that reads as a number ("12", " 3.5 "). No value, a list or other text
// is not a number.

#include <QVariant>
#include <optional>

// The number the value holds or reads as, or nothing when it is not a number.
std::optional<double> numberIn(const QVariant &value);
// True when the value reads as a number.
bool isNumeric(const QVariant &value);
// The value as a floating-point number; raises type mismatch for a value that is not one.
double toNumber(const QVariant &value);
// The value rounded half to even to a 32-bit integer; raises type mismatch for a value that is
// not a number and overflow outside the 32-bit range.
qint32 toLong(const QVariant &value);
// The number rounded half to even to a 32-bit integer; raises overflow outside that range.
qint32 roundToLong(double number);
