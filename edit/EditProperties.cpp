#include "EditProperties.h"

#include "EditSession.h"
#include "PropertyNotify.h"
#include "SystemColors.h"
#include "TreeListError.h"
#include "VariantNumber.h"
#include "lsEdit.h"

std::span<const EditProperties::Row> EditProperties::table() {
    using E = lsEdit;
    using V = const QVariant &;
    // Defined here, inside a member, so the rows may reach the editor's private fields.
    static const Row rows[] = {
        {"BorderStyle", [](const E &) { return asInt16(0); },
         [](const E &e) { return asInt16(e.m_borderStyle); },
         [](E &e, V v) {
             e.m_borderStyle = v.value<qint16>();
             e.applyFrame();
         },
         nullptr, nullptr, 0, true},
        {"Appearance", [](const E &) { return asInt16(1); },
         [](const E &e) { return asInt16(e.m_appearance); },
         [](E &e, V v) {
             e.m_appearance = v.value<qint16>();
             e.applyFrame();
         },
         nullptr, nullptr, 0, true},
        {"BackColor", [](const E &) { return asUInt32(SysButtonFace); },
         [](const E &e) { return asUInt32(e.m_backColor); },
         [](E &e, V v) {
             e.m_backColor = v.value<quint32>();
             e.applyColours();
         },
         nullptr, nullptr, 0, true},
        {"ForeColor", [](const E &) { return asUInt32(SysButtonText); },
         [](const E &e) { return asUInt32(e.m_foreColor); },
         [](E &e, V v) {
             e.m_foreColor = v.value<quint32>();
             e.applyColours();
         },
         nullptr, nullptr, 0, true},
        // The host's own font object, shared: the editor follows changes the host makes to it.
        {"Font", [](const E &e) { return QVariant::fromValue(e.m_host->AmbientFont()); },
         [](const E &e) { return QVariant::fromValue(e.m_font); },
         [](E &e, V v) { e.m_font = v.value<StdFontPtr>(); },
         [](V v) { return stdFontToVariant(v.value<StdFontPtr>()); },
         [](const E &, V v, const PropertyValues &) {
             return QVariant::fromValue(stdFontFromVariant(v.toMap()));
         },
         0, true},
        // Any mode is kept as given, but only a number fits the bag's 32 bits.
        {"Mode", [](const E &) { return asInt32(lsEditTextBox); },
         [](const E &e) { return e.m_mode; }, [](E &e, V v) { e.m_mode = v; },
         [](V v) { return asInt32(toLong(v)); }, nullptr, 0, true},
        {"Enabled", [](const E &) { return QVariant(true); },
         [](const E &e) { return QVariant(e.isEnabled()); },
         [](E &e, V v) { e.QWidget::setEnabled(v.toBool()); }, nullptr, nullptr, 0, true},
        {"Value", [](const E &) { return QVariant(QString()); },
         [](const E &e) { return e.m_value; }, [](E &e, V v) { e.m_value = v; },
         [](V v) { return QVariant(v.toString()); }, nullptr, 0, true},
        // An edit opens only through Edit; set to its default the editor closes. It closes
        // before the list index is stored, as a handler of OnClose may read the index from the
        // list and so overwrite it.
        {"Editing", [](const E &) { return QVariant(false); },
         [](const E &e) { return QVariant(e.isEditing()); },
         [](E &e, V v) {
             if (!v.toBool())
                 e.m_session->close();
         },
         nullptr, nullptr, 0, false},
        // The cached index is what is saved: reading the list would make a save change the
        // control. The list is empty when a control loads, so only the cache is restored.
        {"ListIndex", [](const E &) { return asInt32(0); },
         [](const E &e) { return asInt32(e.m_listIndex); },
         [](E &e, V v) { e.m_listIndex = v.value<qint32>(); },
         [](V v) { return asInt16(toInt16(v.value<qint32>())); }, nullptr, 0, true},
        {"ScaleMode", [](const E &) { return asInt16(1); },
         [](const E &e) { return asInt16(e.m_scaleMode); },
         [](E &e, V v) { e.m_scaleMode = v.value<qint16>(); }, nullptr, nullptr, 0, true},
    };
    static_assert(std::size(rows) == RowCount);
    return rows;
}

void EditProperties::setUp(lsEdit &edit) {
    for (const Row &row : table())
        row.put(edit, row.initial(edit));
}

void EditProperties::reset(lsEdit &edit) {
    // The look and the unit stay as the window has them.
    const auto rows = table();
    for (Id id : {Font, Mode, Value, Editing, ListIndex})
        rows[id].put(edit, rows[id].initial(edit));
}

void EditProperties::read(lsEdit &edit, const PropertyBag &bag) {
    readProperties(edit, table(), bag);
}

void EditProperties::write(const lsEdit &edit, PropertyBag &bag) {
    writeProperties(edit, table(), bag);
}

void EditProperties::set(lsEdit &edit, Id id, const QVariant &value) {
    table()[size_t(id)].put(edit, value);
    notify(edit, id);
}

void EditProperties::notify(lsEdit &edit, Id id) {
    const QString key = QLatin1String(table()[size_t(id)].key);
    emit edit.PropertyChanged(key);
    emitPropertyNotify(edit, key);
}
