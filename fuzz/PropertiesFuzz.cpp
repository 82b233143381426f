// Any bytes as a property file for the tree list and for the editor: either the loader rejects
// them, or the control loads them, or it raises a documented error and is exactly as before.
// Whatever loaded, the control then saves, repaints and loads its own save again.

#include "FuzzApplication.h"
#include "PropertyBag.h"
#include "TreeListError.h"
#include "lsEdit.h"
#include "vkTreeList.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void broken(const char *what) {
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

// What a load must leave alone when it fails: the saved form and, for the tree list, its rows.
template <typename Control> QJsonObject savedForm(const Control &control) {
    PropertyBag bag;
    control.WriteProperties(bag);
    return bag.json();
}

template <typename Control> void loadInto(Control &control, const PropertyBag &bag, auto state) {
    const auto before = state(control);
    try {
        control.ReadProperties(bag);
    } catch (const TreeListError &) {
        if (state(control) != before)
            broken("a failed load changed the control");
        return;
    }
    // Loaded: its own save loads again, to the same saved form.
    PropertyBag again;
    control.WriteProperties(again);
    Control copy;
    copy.ReadProperties(again);
    if (savedForm(copy) != again.json())
        broken("a control's own save does not load back the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzzApplication();
    PropertyBag bag;
    if (!bag.fromJson(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size))))
        return 0;

    vkTreeList list;
    list.resize(200, 120);
    loadInto(list, bag, [](vkTreeList &l) {
        return std::tuple(savedForm(l), l.Headers(), l.Columns(), l.Rows());
    });
    try {
        // A loaded row height of 0 (not range-checked when read) fails a frame with division
        // by zero: a documented error of the host call.
        list.AddItem(emptyText(), lsNext, QStringLiteral("k"), QStringLiteral("row"));
        list.Refresh(true);
    } catch (const TreeListError &) {
    }

    lsEdit editor;
    loadInto(editor, bag, [](lsEdit &e) { return std::tuple(savedForm(e), e.isEditing()); });
    return 0;
}
