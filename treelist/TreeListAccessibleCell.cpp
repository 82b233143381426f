#include "TreeListAccessibleCell.h"

#include "PictureBox.h"
#include "TreeListAccessible.h"
#include "TreeListInput.h"
#include "TreeListState.h"
#include "lsCell.h"
#include "lsCells.h"
#include "vkTreeList.h"

namespace {

lsCell *cellOf(const lsNodePtr &row, int column) {
    return row ? row->borrowCells().cell(column) : nullptr;
}

} // namespace

TreeListAccessibleCell::TreeListAccessibleCell(vkTreeList *list, const lsNodePtr &row, int column)
    : m_list(list), m_row(row), m_column(column), m_header(!row) {}

bool TreeListAccessibleCell::isValid() const {
    return m_list && (m_header || !m_row.expired()) && m_column <= m_list->Columns();
}

QWindow *TreeListAccessibleCell::window() const {
    return m_list ? m_list->window()->windowHandle() : nullptr;
}

TreeListAccessible *TreeListAccessibleCell::tree() const {
    return m_list ? static_cast<TreeListAccessible *>(QAccessible::queryAccessibleInterface(m_list))
                  : nullptr;
}

QAccessibleInterface *TreeListAccessibleCell::parent() const {
    return tree();
}

QString TreeListAccessibleCell::name() const {
    if (m_header)
        return m_list->HeaderCell(lslcData, 1, m_column).toString();
    const lsNodePtr r = row();
    const lsCell *c = cellOf(r, m_column);
    if (!c)
        return {};
    const QString text = m_list->ListCell(lslcData, r->Index(), m_column).toString();
    if (!text.isEmpty())
        return text;
    // A row being added has its text before its first cell does.
    if (m_column == 1 && !r->Text().isEmpty())
        return r->Text();
    return isEmptyText(c->Icon()) ? c->Tag().toString() : c->Icon().toString();
}

QString TreeListAccessibleCell::treePlace(const lsNode &r) const {
    int level = 1, children = 0;
    for (lsNodePtr up = r.Parent(); up; up = up->Parent())
        ++level;
    for (lsNodePtr child = r.Child(); child; child = child->NextSibling())
        ++children;
    QString place = QStringLiteral("Level %1").arg(level);
    if (const lsNodePtr parent = r.Parent())
        place += QStringLiteral(" under %1").arg(parent->Text());
    return children ? place + QStringLiteral(", %1 children").arg(children) : place;
}

QString TreeListAccessibleCell::text(QAccessible::Text t) const {
    if (!isValid())
        return {};
    if (t == QAccessible::Name)
        return name();
    if (t != QAccessible::Description)
        return {};
    // A header's description: the texts of the header rows under the first.
    if (m_header) {
        QStringList below;
        for (qint32 r = 2; r <= m_list->Headers(); ++r)
            below << m_list->HeaderCell(lslcData, r, m_column).toString();
        return below.join(QStringLiteral(" / "));
    }
    return m_column == 1 ? treePlace(*row()) : QString();
}

QRect TreeListAccessibleCell::rect() const {
    if (!isValid())
        return {};
    const lsNodePtr r = m_header ? m_list->headers()->at(1) : row();
    const lsCell *c = cellOf(r, m_column);
    if (!c || (!m_header && !r->Displayed()))
        return {};
    // Cells lie where the unscrolled frame put them; the screen shows them scrolled.
    const QPoint topLeft(c->Left() + m_list->HorizontalOffset(), c->Top());
    return QRect(m_list->picOut()->mapToGlobal(topLeft), QSize(c->Width(), c->Height()));
}

QAccessible::Role TreeListAccessibleCell::role() const {
    return m_header ? QAccessible::ColumnHeader : QAccessible::TreeItem;
}

QAccessible::State TreeListAccessibleCell::state() const {
    QAccessible::State s;
    if (!isValid()) {
        s.invalid = true;
        return s;
    }
    if (m_header)
        return s;
    const lsNodePtr r = row();
    s.selectable = s.focusable = true;
    s.invisible = s.offscreen = !r->Displayed();
    s.expandable = r->HasChild();
    s.expanded = r->HasChild() && r->Expanded();
    s.collapsed = r->HasChild() && !r->Expanded();
    s.selected = isSelected();
    s.focused = m_list->picOut()->hasFocus() && m_list->rows()->SelectedRow() == r &&
                std::max(m_list->Col(), 1) == m_column;
    return s;
}

void *TreeListAccessibleCell::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface *>(this);
    if (type == QAccessible::ActionInterface && !m_header)
        return static_cast<QAccessibleActionInterface *>(this);
    return nullptr;
}

bool TreeListAccessibleCell::selected(vkTreeList &list, const lsNodePtr &row, int column) {
    if (!row || !row->Selected())
        return false;
    const lsCell *c = cellOf(row, column);
    return list.FocusType() == lsSelectFullRow || (c && c->Selected());
}

bool TreeListAccessibleCell::isSelected() const {
    return !m_header && m_list && selected(*m_list, row(), m_column);
}

QList<QAccessibleInterface *> TreeListAccessibleCell::columnHeaderCells() const {
    TreeListAccessible *t = tree();
    QAccessibleInterface *header = t && !m_header ? t->cell(nullptr, m_column) : nullptr;
    return header ? QList<QAccessibleInterface *>{header} : QList<QAccessibleInterface *>{};
}

int TreeListAccessibleCell::rowIndex() const {
    TreeListAccessible *t = tree();
    const lsNodePtr r = row();
    return t && r ? t->rankOf(*r) : -1;
}

QStringList TreeListAccessibleCell::actionNames() const {
    const lsNodePtr r = row();
    if (m_header || !r)
        return {};
    QStringList names{pressAction()};
    if (r->HasChild())
        names << toggleAction();
    return names;
}

void TreeListAccessibleCell::doAction(const QString &actionName) {
    const lsNodePtr r = row();
    if (!isValid() || !r || !actionNames().contains(actionName))
        return;
    // As a click would: the selection and its events, or the row opened or closed.
    vkTreeList &list = *m_list;
    list.guarded("accessibility action", [&] {
        if (actionName == toggleAction())
            list.d->input->toggle(r);
        else
            list.d->input->select(r, m_column);
    });
}
