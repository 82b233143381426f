#pragma once
// The one exception type of the component: a run-time error number with its text, as a host
// would see it from a failed call.

#include "vkTreeListExport.h"
#include <QString>
#include <stdexcept>

class VKTL_EXPORT TreeListError : public std::runtime_error {
public:
    // The error numbers the component raises.
    enum Number : int {
        InvalidArgument = 5, // a position or key that names no item
        Overflow = 6,        // a 16-bit counter or result past its range
        OutOfMemory = 7,     // an allocation failed
        DivisionByZero = 11, // a layout computed with a row height of 0
        TypeMismatch = 13,   // a value of the wrong type (an index-or-key that is neither)
        InternalError = 51,  // anything else that went wrong inside the component
        DuplicateKey = 457,  // a key already used in a keyed collection
    };

    // Makes an error with the given number and text.
    TreeListError(int number, const QString &description);
    // Makes an error with the given number and its standard text.
    explicit TreeListError(Number number);

    // The error number.
    int number() const noexcept { return m_number; }
    // The error text.
    QString description() const { return m_description; }

    // The standard text of an error number ("" for numbers the component never raises).
    static QString standardText(int number);

private:
    int m_number;
    QString m_description;
};

// Narrows to a signed 16-bit value, raising the overflow error outside -32768..32767.
VKTL_EXPORT qint16 toInt16(qint64 value);
// Narrows to a signed 32-bit value, raising the overflow error outside its range.
VKTL_EXPORT qint32 toInt32(qint64 value);
// Divides as floating point does, except that a zero divisor raises division by zero (0 / 0
// raises overflow instead).
VKTL_EXPORT double divide(double dividend, double divisor);
