#pragma once
// A control's properties as one table: each row says how the property bag and Qt's property
// system know a property, its default, and how the control gives and takes its value. Loading
// and saving work from the rows, so a control writes each default once and both controls load
// and save the same way: everything is read and checked before anything changes, and everything
// is converted before anything is written.

#include "PropertyBag.h"
#include "TreeListError.h"

#include <QHash>
#include <QVariant>
#include <span>
#include <vector>

// The values a load has read so far, by key, as the bag held them.
using PropertyValues = QHash<QString, QVariant>;

template <class Owner> struct PropertyRow {
    // The bag key, the Q_PROPERTY's name and the key PropertyChanged reports.
    const char *key;
    // The default, in the form `put` takes.
    QVariant (*initial)(const Owner &);
    // The value now, in the form `put` takes.
    QVariant (*value)(const Owner &);
    // Stores a value; a load calls it only after every row has been checked.
    void (*put)(Owner &, const QVariant &);
    // The bag's form of a value; raises when it cannot be stored. Null: the same form.
    QVariant (*toBag)(const QVariant &);
    // What `put` will take for the value the bag held, raising what taking it in would raise;
    // sees the values read before it. Null: the value as the bag held it.
    QVariant (*fromBag)(const Owner &, const QVariant &stored, const PropertyValues &read);
    // Loads put the rows phase by phase, in table order within a phase.
    int phase;
    // Whether the bag holds it; the others take their defaults when a control loads.
    bool persisted;
};

// The number forms a bag keeps apart: 16-bit, 32-bit, and 32-bit unsigned (colours).
inline QVariant asInt16(qint32 v) {
    return QVariant::fromValue<qint16>(static_cast<qint16>(v));
}
inline QVariant asInt32(qint32 v) {
    return QVariant::fromValue<qint32>(v);
}
inline QVariant asUInt32(quint32 v) {
    return QVariant::fromValue<quint32>(v);
}

template <class Owner> QVariant bagForm(const PropertyRow<Owner> &row, const QVariant &value) {
    return row.toBag ? row.toBag(value) : value;
}

// Loads the rows from a bag. A bad value raises, naming its property, and changes nothing.
template <class Owner>
void readProperties(Owner &owner, std::span<const PropertyRow<Owner>> rows,
                    const PropertyBag &bag) {
    std::vector<QVariant> values(rows.size());
    PropertyValues read;
    int lastPhase = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        const PropertyRow<Owner> &row = rows[i];
        lastPhase = std::max(lastPhase, row.phase);
        values[i] = row.initial(owner);
        if (!row.persisted)
            continue;
        const QString key = QLatin1String(row.key);
        const QVariant stored = bag.ReadProperty(key, bagForm(row, values[i]));
        try {
            values[i] = row.fromBag ? row.fromBag(owner, stored, read) : stored;
        } catch (const TreeListError &e) {
            throw bag.errorAt(key, e);
        }
        read.insert(key, stored);
    }
    for (int phase = 0; phase <= lastPhase; ++phase)
        for (size_t i = 0; i < rows.size(); ++i)
            if (rows[i].phase == phase)
                rows[i].put(owner, values[i]);
}

// Saves the persisted rows, leaving out every value equal to its default. A value that cannot be
// stored raises before anything is written.
template <class Owner>
void writeProperties(const Owner &owner, std::span<const PropertyRow<Owner>> rows,
                     PropertyBag &bag) {
    std::vector<std::pair<QVariant, QVariant>> saved(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].persisted)
            saved[i] = {bagForm(rows[i], rows[i].value(owner)),
                        bagForm(rows[i], rows[i].initial(owner))};
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].persisted)
            bag.WriteProperty(QLatin1String(rows[i].key), saved[i].first, saved[i].second);
}
