#pragma once
// The editor's properties as one table of the shape both controls share. Set-up, InitProperties,
// loading, saving and the property setters all work from the rows, so each default is written once.

#include "PropertyTable.h"

#include <span>

class lsEdit;

class EditProperties {
public:
    using Row = PropertyRow<lsEdit>;
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
    // The text, the mode, the list index and the font at their defaults; the edit closed.
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
