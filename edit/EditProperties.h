#pragma once
// The editor's properties as one table. Each row says how the property bag and the Qt property
// system know the property, where the editor keeps it, its default, whether it is saved, whether
// InitProperties sets it afresh and how a change is told. Set-up, InitProperties, loading, saving
// and the property setters all work from the rows, so each default is written once.

#include <QVariant>
#include <span>

class PropertyBag;
class lsEdit;

class EditProperties {
public:
    // One property. Values come in two forms: as the editor keeps them (the field's form) and
    // as the bag stores them.
    struct Row {
        const char *key;                         // bag key, Q_PROPERTY name and PropertyChanged key
        QVariant (*initial)(const lsEdit &);     // the default, in the field's form
        bool persisted;                          // loaded and saved through the property bag
        bool reset;                              // set back to its default by InitProperties
        void (lsEdit::*changed)();               // the Q_PROPERTY's notification; null for none
        QVariant (*field)(const lsEdit &);       // the field's value
        void (*put)(lsEdit &, const QVariant &); // stores a value in the field, telling no one
        QVariant (*toBag)(const QVariant &);     // the bag's form; raises when it cannot be
                                                 // stored; null when the forms are the same
        QVariant (*fromBag)(const QVariant &);   // the field's form of what the bag held;
                                                 // raises when it does not convert; null: same
    };
    // The rows in table order, which is the order values are read, stored and saved in.
    enum Id {
        BorderStyle,
        Appearance,
        BackColor,
        ForeColor,
        Font,
        Mode,
        Enabled,
        Value,
        Editing,
        ListIndex,
        ScaleMode
    };
    static constexpr std::size_t RowCount = ScaleMode + 1;

    static std::span<const Row> table();

    // Every property at its default: a new control.
    static void setUp(lsEdit &edit);
    // The rows marked reset at their defaults: InitProperties.
    static void reset(lsEdit &edit);
    // Loads the persisted rows; the others take their defaults. Everything is read and checked
    // before anything is stored, so a bad bag changes nothing; errors name the property.
    static void read(lsEdit &edit, const PropertyBag &bag);
    // Saves the persisted rows (a value equal to its default is not stored). A value that cannot
    // be stored raises before anything is written.
    static void write(const lsEdit &edit, PropertyBag &bag);
    // Stores a value in the field's form and tells of the change.
    static void set(lsEdit &edit, Id id, const QVariant &value);
    // Tells of a change: PropertyChanged with the key, then the property's own notification.
    static void notify(lsEdit &edit, Id id);
};
