#include "TypeAhead.h"

#include "lsCell.h"
#include "lsCells.h"

#include <QApplication>
#include <algorithm>

namespace {

bool printable(const QString &text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
}

} // namespace

lsNodePtr TypeAhead::typed(const QString &text, const lsNodes &rows, const lsNodePtr &current) {
    if (!printable(text)) {
        m_text.clear();
        return nullptr;
    }
    if (!m_sinceLast.isValid() || m_sinceLast.elapsed() > QApplication::keyboardInputInterval())
        m_text.clear();
    m_sinceLast.start();
    m_text += text;
    // The same character again steps through the rows that start with it, as item views do.
    const bool repeated = m_text.size() > 1 && m_text.count(m_text.front()) == m_text.size();
    const QString wanted = repeated ? m_text.left(1) : m_text;
    const bool fresh = m_text.size() == text.size() || repeated;
    const qint32 count = rows.VisibleRowsUpTo(rows.Count());
    if (count == 0)
        return nullptr;
    const qint32 currentRank =
        current && current->Visible() ? rows.VisibleRowsUpTo(current->Index()) : 0;
    // A fresh text starts after the current row; one typed on starts at it.
    const qint32 start = currentRank == 0 ? 1 : fresh ? currentRank % count + 1 : currentRank;
    const std::vector<lsNodePtr> visible = rows.VisibleRowsFrom(1, count);
    for (qint32 i = 0; i < count; ++i) {
        const lsNodePtr &row = visible[size_t((start - 1 + i) % count)];
        const lsCell *first = row->borrowCells().cell(1);
        if (first && first->Title().startsWith(wanted, Qt::CaseInsensitive))
            return row;
    }
    return nullptr;
}
