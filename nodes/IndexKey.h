#pragma once
// Index-or-key arguments. The whole component passes them as QVariant:
//   - a number (any integer or floating type, rounded half to even) names a 1-based position;
//   - a string names a key; QString("") is the empty key, which names nothing;
//   - an invalid QVariant() is "no value" (an omitted optional argument).
// Anything else (a list, a bool, ...) is of the wrong type.

#include "vkTreeListExport.h"
#include <QString>
#include <QVariant>
#include <optional>

// What an index-or-key argument names.
enum class IndexKeyKind {
    Missing,  // QVariant(): no value given
    Position, // a number
    Key,      // a string, possibly empty
    Invalid,  // any other type
};

// Tells what kind of index-or-key the value is.
IndexKeyKind indexKeyKind(const QVariant &value);

// The position a numeric value names (rounded half to even); nullopt for non-numbers and for
// values beyond the 32-bit range.
std::optional<qint32> indexKeyPosition(const QVariant &value);

// True when the value compares equal to "": no value, or an empty string.
VKTL_EXPORT bool isEmptyText(const QVariant &value);

// The empty-string variant the component uses as its "nothing" default for Variant fields.
inline QVariant emptyText() {
    return QVariant(QString());
}

// A variant's text as the component compares it (numbers in decimal, no value as "").
VKTL_EXPORT QString variantText(const QVariant &value);
