#include "EditProperties.h"

#include "EditSession.h"
#include "PropertyBag.h"
#include "SystemColors.h"
#include "TreeListError.h"
#include "VariantNumber.h"
#include "lsEdit.h"

#include <array>

namespace {

QVariant i16(qint16 v) {
    return QVariant::fromValue<qint16>(v);
}

QVariant i32(qint32 v) {
    return QVariant::fromValue<qint32>(v);
}

QVariant u32(quint32 v) {
    return QVariant::fromValue<quint32>(v);
}

QVariant bagForm(const EditProperties::Row &row, const QVariant &field) {
    return row.toBag ? row.toBag(field) : field;
}

// The default of every row, in the field's form.
std::array<QVariant, EditProperties::RowCount> defaults(const lsEdit &edit) {
    std::array<QVariant, EditProperties::RowCount> values;
    const auto rows = EditProperties::table();
    for (size_t i = 0; i < rows.size(); ++i)
        values[i] = rows[i].initial(edit);
    return values;
}

} // namespace

std::span<const EditProperties::Row> EditProperties::table() {
    using E = lsEdit;
    // Defined here, inside a member, so the rows may reach the editor's private fields.
    static const Row rows[] = {
        {"BorderStyle", [](const E &) { return i16(0); }, true, false, &E::BorderStyleChanged,
         [](const E &e) { return i16(e.m_borderStyle); },
         [](E &e, const QVariant &v) {
             e.m_borderStyle = v.value<qint16>();
             e.applyFrame();
         },
         nullptr, nullptr},
        {"Appearance", [](const E &) { return i16(1); }, true, false, &E::AppearanceChanged,
         [](const E &e) { return i16(e.m_appearance); },
         [](E &e, const QVariant &v) {
             e.m_appearance = v.value<qint16>();
             e.applyFrame();
         },
         nullptr, nullptr},
        {"BackColor", [](const E &) { return u32(SysButtonFace); }, true, false,
         &E::BackColorChanged, [](const E &e) { return u32(e.m_backColor); },
         [](E &e, const QVariant &v) {
             e.m_backColor = v.value<quint32>();
             e.applyColours();
         },
         nullptr, nullptr},
        {"ForeColor", [](const E &) { return u32(SysButtonText); }, true, false,
         &E::ForeColorChanged, [](const E &e) { return u32(e.m_foreColor); },
         [](E &e, const QVariant &v) {
             e.m_foreColor = v.value<quint32>();
             e.applyColours();
         },
         nullptr, nullptr},
        // The host's own font object, shared: the editor follows changes the host makes to it.
        {"Font", [](const E &e) { return QVariant::fromValue(e.m_host->AmbientFont()); }, true,
         true, &E::FontChanged, [](const E &e) { return QVariant::fromValue(e.m_font); },
         [](E &e, const QVariant &v) { e.m_font = v.value<StdFontPtr>(); },
         [](const QVariant &v) { return stdFontToVariant(v.value<StdFontPtr>()); },
         [](const QVariant &v) { return QVariant::fromValue(stdFontFromVariant(v.toMap())); }},
        // Any mode is kept as given, but only a number fits the bag's 32 bits.
        {"Mode", [](const E &) { return i32(lsEditTextBox); }, true, true, &E::ModeChanged,
         [](const E &e) { return e.m_mode; }, [](E &e, const QVariant &v) { e.m_mode = v; },
         [](const QVariant &v) { return i32(toLong(v)); }, nullptr},
        {"Enabled", [](const E &) { return QVariant(true); }, true, false, &E::EnabledChanged,
         [](const E &e) { return QVariant(e.isEnabled()); },
         [](E &e, const QVariant &v) { e.QWidget::setEnabled(v.toBool()); }, nullptr, nullptr},
        {"Value", [](const E &) { return QVariant(QString()); }, true, true, &E::ValueChanged,
         [](const E &e) { return e.m_value; }, [](E &e, const QVariant &v) { e.m_value = v; },
         [](const QVariant &v) { return QVariant(v.toString()); }, nullptr},
        // An edit opens only through Edit; set to its default the editor closes. It closes
        // before the list index is stored, as a handler of OnClose may read the index from the
        // list and so overwrite it.
        {"Editing", [](const E &) { return QVariant(false); }, false, true, nullptr,
         [](const E &e) { return QVariant(e.isEditing()); },
         [](E &e, const QVariant &v) {
             if (!v.toBool())
                 e.m_session->close();
         },
         nullptr, nullptr},
        // The cached index is what is saved: reading the list would make a save change the
        // control. The list is empty when a control loads, so only the cache is restored.
        {"ListIndex", [](const E &) { return i32(0); }, true, true, &E::ListIndexChanged,
         [](const E &e) { return i32(e.m_listIndex); },
         [](E &e, const QVariant &v) { e.m_listIndex = v.value<qint32>(); },
         [](const QVariant &v) { return i16(toInt16(v.value<qint32>())); }, nullptr},
        {"ScaleMode", [](const E &) { return i16(1); }, true, false, &E::ScaleModeChanged,
         [](const E &e) { return i16(e.m_scaleMode); },
         [](E &e, const QVariant &v) { e.m_scaleMode = v.value<qint16>(); }, nullptr, nullptr},
    };
    static_assert(std::size(rows) == RowCount);
    return rows;
}

void EditProperties::setUp(lsEdit &edit) {
    const auto values = defaults(edit);
    const auto rows = table();
    for (size_t i = 0; i < rows.size(); ++i)
        rows[i].put(edit, values[i]);
}

void EditProperties::reset(lsEdit &edit) {
    const auto values = defaults(edit);
    const auto rows = table();
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].reset)
            rows[i].put(edit, values[i]);
}

void EditProperties::read(lsEdit &edit, const PropertyBag &bag) {
    auto values = defaults(edit);
    const auto rows = table();
    for (size_t i = 0; i < rows.size(); ++i) {
        const Row &row = rows[i];
        if (!row.persisted)
            continue;
        const QString key = QLatin1String(row.key);
        const QVariant stored = bag.ReadProperty(key, bagForm(row, values[i]));
        try {
            values[i] = row.fromBag ? row.fromBag(stored) : stored;
        } catch (const TreeListError &e) {
            throw bag.errorAt(key, e);
        }
    }
    for (size_t i = 0; i < rows.size(); ++i)
        rows[i].put(edit, values[i]);
}

void EditProperties::write(const lsEdit &edit, PropertyBag &bag) {
    const auto values = defaults(edit);
    const auto rows = table();
    std::array<std::pair<QVariant, QVariant>, RowCount> saved;
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].persisted)
            saved[i] = {bagForm(rows[i], rows[i].field(edit)), bagForm(rows[i], values[i])};
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].persisted)
            bag.WriteProperty(QLatin1String(rows[i].key), saved[i].first, saved[i].second);
}

void EditProperties::set(lsEdit &edit, Id id, const QVariant &value) {
    table()[size_t(id)].put(edit, value);
    notify(edit, id);
}

void EditProperties::notify(lsEdit &edit, Id id) {
    const Row &row = table()[size_t(id)];
    emit edit.PropertyChanged(QLatin1String(row.key));
    if (row.changed)
        (edit.*row.changed)();
}
