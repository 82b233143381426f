#include "DemoTable.h"

QString DemoTable::addRow(const QString &parentKey, const QString &wantedKey, const QString &image,
                          const QStringList &cells) {
    Row row;
    row.parentKey = parentKey;
    if (!parentKey.isEmpty()) {
        const int parent = position(parentKey);
        Q_ASSERT(parent >= 0);
        row.level = m_rows[parent].level + 1;
        ++m_rows[parent].childCount;
    }
    row.key = wantedKey;
    for (int n = 2; m_positions.contains(row.key.toCaseFolded()); ++n)
        row.key = QStringLiteral("%1|%2").arg(wantedKey).arg(n);
    row.image = image;
    row.cells = cells;
    m_positions.insert(row.key.toCaseFolded(), static_cast<int>(m_rows.size()));
    m_rows.append(row);
    return row.key;
}

int DemoTable::position(const QString &key) const {
    return m_positions.value(key.toCaseFolded(), -1);
}

QString DemoTable::text(int row, int column) const {
    if (row < 0 || row >= m_rows.size())
        return QString();
    return m_rows[row].cells.value(column);
}

bool DemoTable::setText(int row, int column, const QString &text) {
    if (row < 0 || row >= m_rows.size() || column < 0 || column >= m_rows[row].cells.size())
        return false;
    m_rows[row].cells[column] = text;
    return true;
}
