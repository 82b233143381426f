#include "TreeLoader.h"

#include "vkTreeList.h"

#include <QSet>
#include <algorithm>

TreeLoader::TreeLoader(vkTreeList &tree, const DemoTable &table) : m_tree(tree), m_table(table) {}

void TreeLoader::load() {
    const bool autoRedraw = m_tree.AutoRedraw();
    const bool autoSelectNew = m_tree.AutoSelectNew();
    m_tree.setAutoRedraw(false);
    m_tree.setAutoSelectNew(false);
    m_tree.Clear();
    m_tree.setColumns(1);

    QString lastTopLevel;
    for (const DemoTable::Row &row : m_table.rows()) {
        const QString text = row.cells.value(0);
        if (!row.parentKey.isEmpty()) {
            m_tree.AddItem(row.parentKey, lsChild, row.key, text, row.image);
        } else {
            // The first top-level row goes into the empty control, the others after it.
            m_tree.AddItem(lastTopLevel, lsNext, row.key, text, row.image);
            lastTopLevel = row.key;
        }
    }
    sizeLastColumn();
    growColumns(static_cast<qint32>(m_table.columns.size()));
    labelHeaders();
    openFirstBranches(FirstScreenRows);
    m_tree.setAutoSelectNew(autoSelectNew);
    m_tree.setAutoRedraw(autoRedraw);
}

void TreeLoader::setColumnCount(qint32 columns) {
    if (columns < m_tree.Columns())
        m_tree.setColumns(columns);
    else
        growColumns(columns);
    labelHeaders();
}

void TreeLoader::refillColumns(qint32 first) {
    const qint32 columns = m_tree.Columns();
    if (first < 2 || first > columns)
        return;
    m_tree.setColumns(first - 1);
    setColumnCount(columns);
}

void TreeLoader::growColumns(qint32 columns) {
    for (qint32 c = m_tree.Columns() + 1; c <= columns; ++c) {
        m_tree.setColumns(c);
        fillColumn(c);
        sizeLastColumn();
    }
}

void TreeLoader::fillColumn(qint32 column) {
    if (column > m_table.columns.size())
        return;
    const qint32 alignment = m_table.columns[column - 1].alignment;
    const qint32 rows = std::min<qint32>(m_tree.Rows(), m_table.rows().size());
    for (qint32 r = 1; r <= rows; ++r) {
        if (column > 1)
            m_tree.setListCell(lslcData, r, column, m_table.text(r - 1, column - 1));
        if (alignment != lsAlignLeftJustify)
            m_tree.setListCell(lslcAlignment, r, column, alignment);
    }
}

void TreeLoader::sizeLastColumn() {
    const qint32 column = m_tree.Columns();
    if (m_tree.Rows() == 0 || column > m_table.columns.size())
        return;
    const DemoTable::Column &info = m_table.columns[column - 1];
    // Fitted to the header title when there is one, so fill in the titles first.
    labelHeaders();
    m_tree.AutoSize(column);
    const qint32 fitted = m_tree.ColumnWidth(column) / TwipsPerPixel;
    m_tree.setColumnWidth(column, std::clamp(fitted, info.minWidth, info.maxWidth) * TwipsPerPixel);
}

void TreeLoader::matchHeaderWidths() {
    if (m_tree.Rows() == 0)
        return;
    for (qint32 c = 1; c <= m_tree.Columns(); ++c) {
        const qint32 width = m_tree.ListCell(lslcWidth, 1, c).toInt();
        if (width > 0)
            m_tree.setColumnWidth(c, width * TwipsPerPixel);
    }
}

void TreeLoader::labelHeaders() {
    const qint32 columns = std::min<qint32>(m_tree.Columns(), m_table.columns.size());
    const qint32 headers = m_tree.Headers();
    for (qint32 c = 1; c <= columns; ++c) {
        const DemoTable::Column &column = m_table.columns[c - 1];
        if (headers >= 1)
            m_tree.setHeaderCell(lslcData, 1, c, column.title);
        if (headers >= 2)
            m_tree.setHeaderCell(lslcData, 2, c, column.note);
        for (qint32 h = 1; h <= std::min<qint32>(headers, 2); ++h)
            m_tree.setHeaderCell(lslcAlignment, h, c, column.alignment);
    }
}

void TreeLoader::openFirstBranches(int budget) {
    const QList<DemoTable::Row> &rows = m_table.rows();
    QSet<QString> open;
    QSet<QString> onFirstBranch;
    QSet<QString> branchTaken; // parents whose first branch child is already chosen
    int inView = 0;
    for (const DemoTable::Row &row : rows)
        if (row.level == 0)
            ++inView;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const DemoTable::Row &row = rows[i];
        if (row.childCount == 0)
            continue;
        if (!row.parentKey.isEmpty() && !open.contains(row.parentKey))
            continue;
        // The first branch: the first row with children at the top, then the first row with
        // children under each row of the branch.
        const QString parent = row.parentKey.isEmpty() ? QStringLiteral("/") : row.parentKey;
        const bool parentOnBranch = row.parentKey.isEmpty() || onFirstBranch.contains(parent);
        if (parentOnBranch && !branchTaken.contains(parent)) {
            branchTaken.insert(parent);
            onFirstBranch.insert(row.key);
        }
        const bool wanted = row.level <= 1 || onFirstBranch.contains(row.key);
        if (!wanted || inView + row.childCount > budget)
            continue;
        open.insert(row.key);
        inView += row.childCount;
        m_tree.Expand(static_cast<qint32>(i + 1));
    }
}
