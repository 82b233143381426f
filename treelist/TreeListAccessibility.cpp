#include "TreeListAccessibility.h"

#include "PictureBox.h"
#include "TreeListAccessible.h"
#include "vkTreeList.h"

#include <QAccessible>

TreeListAccessible *TreeListAccessibility::tree() const {
    return static_cast<TreeListAccessible *>(QAccessible::queryAccessibleInterface(&t));
}

void TreeListAccessibility::laidOut() {
    if (!QAccessible::isActive()) {
        m_rows = -1;
        return;
    }
    TreeListAccessible *iface = tree();
    const qint32 rows = t.rows()->Count(), visible = iface->rowCount();
    const lsNodePtr selected = t.rows()->SelectedRow();
    const qint32 column = std::max(t.Col(), 1), first = t.FirstDisplayedRow();
    const bool known = m_rows >= 0;
    if (known && (rows != m_rows || visible != m_visibleRows)) {
        QAccessibleTableModelChangeEvent reset(&t, QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::updateAccessibility(&reset);
    }
    if (known && selected && (selected.get() != m_selected || column != m_column)) {
        if (QAccessibleInterface *cell = iface->cell(selected, column)) {
            QAccessibleEvent selection(cell, QAccessible::Selection);
            QAccessible::updateAccessibility(&selection);
            if (t.picOut()->hasFocus()) {
                QAccessibleEvent focus(cell, QAccessible::Focus);
                QAccessible::updateAccessibility(&focus);
            }
        }
    }
    if (known && first != m_first) {
        QAccessibleEvent scrolled(&t, QAccessible::VisibleDataChanged);
        QAccessible::updateAccessibility(&scrolled);
    }
    m_rows = rows;
    m_visibleRows = visible;
    m_selected = selected.get();
    m_column = column;
    m_first = first;
}

void TreeListAccessibility::focused() {
    if (!QAccessible::isActive())
        return;
    const lsNodePtr selected = t.rows()->SelectedRow();
    QAccessibleInterface *cell = selected ? tree()->cell(selected, std::max(t.Col(), 1)) : nullptr;
    if (cell) {
        QAccessibleEvent focus(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

void TreeListAccessibility::expandedChanged(const lsNodePtr &row) {
    if (!QAccessible::isActive())
        return;
    if (QAccessibleInterface *cell = tree()->cell(row, 1)) {
        QAccessible::State changed;
        changed.expanded = changed.collapsed = true;
        QAccessibleStateChangeEvent event(cell, changed);
        QAccessible::updateAccessibility(&event);
    }
}

void TreeListAccessibility::cellChanged(const lsNodePtr &row, qint32 column) {
    if (!QAccessible::isActive())
        return;
    if (QAccessibleInterface *cell = tree()->cell(row, column)) {
        QAccessibleEvent event(cell, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}
