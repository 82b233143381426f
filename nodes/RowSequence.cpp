#include "RowSequence.h"

#include <algorithm>
#include <cassert>

RowSequence::~RowSequence() {
    IndexPuts none;
    clear(none);
}

qint32 RowSequence::offsetOf(const RowBlock *block, const lsNode *row) {
    // Rows move only a little within their block between lookups, so the search starts where
    // the row was last found and widens from there.
    const qint32 hint = std::min<qint32>(row->m_offsetHint, block->size - 1);
    for (qint32 d = 0; d < block->size; ++d) {
        for (const qint32 i : {hint + d, hint - d - 1}) {
            if (i >= 0 && i < block->size && block->rows[i].get() == row) {
                row->m_offsetHint = quint8(i);
                return i;
            }
        }
    }
    assert(false && "row not in its block");
    return 0;
}

void RowSequence::ensureStarts(qint32 through) const {
    for (qint32 i = m_startsValid; i <= through; ++i)
        m_starts[size_t(i)] = i == 0 ? 0 : m_starts[size_t(i - 1)] + m_blocks[size_t(i - 1)]->size;
    m_startsValid = std::max(m_startsValid, through + 1);
}

void RowSequence::ensureVisibleStarts(qint32 through) const {
    for (qint32 i = m_visibleValid; i <= through; ++i)
        m_visibleStarts[size_t(i)] =
            i == 0 ? 0 : m_visibleStarts[size_t(i - 1)] + m_blocks[size_t(i - 1)]->visible;
    m_visibleValid = std::max(m_visibleValid, through + 1);
}

qint32 RowSequence::indexOf(const RowBlock *block) const {
    if (block->index >= m_indexValid) {
        for (size_t i = size_t(m_indexValid); i < m_blocks.size(); ++i)
            m_blocks[i]->index = qint32(i);
        m_indexValid = qint32(m_blocks.size());
    }
    return block->index;
}

void RowSequence::sizeChanged(const RowBlock *block) {
    // A block past the known places lies past every valid start as well, unless starts were
    // summed further since: only then is its place looked up.
    if (block->index < m_indexValid || std::max(m_startsValid, m_visibleValid) > m_indexValid) {
        const qint32 i = indexOf(block);
        m_startsValid = std::min(m_startsValid, i + 1);
        m_visibleValid = std::min(m_visibleValid, i + 1);
    }
}

void RowSequence::blocksChanged(qint32 from) {
    // Places are renumbered only when one is needed: a load that splits blocks in the middle
    // would otherwise touch every later block each time.
    m_indexValid = std::min(m_indexValid, from);
    m_starts.resize(m_blocks.size());
    m_visibleStarts.resize(m_blocks.size());
    m_startsValid = std::min(m_startsValid, from);
    m_visibleValid = std::min(m_visibleValid, from);
    m_finger = 0;
}

RowBlock *RowSequence::newBlockAt(qint32 index) {
    auto block = std::make_unique<RowBlock>();
    block->owner = &m_owner;
    block->sequence = this;
    block->index = index;
    RowBlock *raw = block.get();
    m_blocks.insert(m_blocks.begin() + index, std::move(block));
    blocksChanged(index);
    return raw;
}

void RowSequence::eraseBlock(qint32 index) {
    m_blocks.erase(m_blocks.begin() + index);
    blocksChanged(index);
}

RowSequence::Place RowSequence::placeOf(qint32 rank) const {
    // Sequential walks by position stay in one block, so try the last one first.
    if (m_finger < m_startsValid && size_t(m_finger) < m_blocks.size()) {
        const qint32 start = m_starts[size_t(m_finger)];
        if (rank > start && rank <= start + m_blocks[size_t(m_finger)]->size)
            return {m_blocks[size_t(m_finger)].get(), rank - start - 1};
    }
    // Bring the starts up to date only as far as the rank needs.
    const qint32 blocks = qint32(m_blocks.size());
    while (m_startsValid < blocks) {
        const qint32 last = m_startsValid - 1;
        if (last >= 0 && m_starts[size_t(last)] + m_blocks[size_t(last)]->size >= rank)
            break;
        ensureStarts(m_startsValid);
    }
    const auto begin = m_starts.begin(), end = begin + m_startsValid;
    const qint32 b = qint32(std::upper_bound(begin, end, rank - 1) - begin) - 1;
    m_finger = b;
    return {m_blocks[size_t(b)].get(), rank - m_starts[size_t(b)] - 1};
}

qint32 RowSequence::rankOf(const lsNode *row) {
    const RowBlock *block = blockOf(row);
    const RowSequence *self = block->sequence;
    const qint32 b = self->indexOf(block);
    self->ensureStarts(b);
    return self->m_starts[size_t(b)] + offsetOf(block, row) + 1;
}

const lsNodePtr *RowSequence::slotAt(qint32 rank) const {
    if (rank < 1 || rank > m_size)
        return nullptr;
    // The last row (the collection's tail after every change) needs no block starts.
    if (rank == m_size) {
        const RowBlock *last = m_blocks.back().get();
        return &last->rows[last->size - 1];
    }
    const Place place = placeOf(rank);
    return &place.block->rows[place.offset];
}

void RowSequence::insertAfter(const lsNode *previous, lsNodePtr row) {
    if (!previous) {
        insertAt(m_blocks.empty() ? newBlockAt(0) : m_blocks.front().get(), 0, std::move(row));
        return;
    }
    RowBlock *block = blockOf(previous);
    insertAt(block, offsetOf(block, previous) + 1, std::move(row));
}

void RowSequence::insertAt(RowBlock *block, qint32 offset, lsNodePtr row) {
    constexpr qint32 cap = RowBlock::kCapacity;
    if (block->size == cap) {
        if (offset == cap) {
            // Appending past a full block: the next block's front, or a new block. Loads that
            // add row after row thus fill blocks completely.
            const size_t next = size_t(indexOf(block)) + 1;
            block = next < m_blocks.size() && m_blocks[next]->size < cap ? m_blocks[next].get()
                                                                         : newBlockAt(qint32(next));
            offset = 0;
        } else {
            RowBlock *upper = newBlockAt(indexOf(block) + 1);
            for (qint32 i = cap / 2; i < cap; ++i) {
                lsNodePtr &moved = block->rows[i];
                moved->m_holder = upper;
                upper->visible += moved->m_Visible;
                upper->unsettled += moved->m_unsettled;
                upper->rows[upper->size++] = std::move(moved);
            }
            block->size = cap / 2;
            block->visible -= upper->visible;
            block->unsettled -= upper->unsettled;
            sizeChanged(block);
            if (offset > block->size) {
                offset -= block->size;
                block = upper;
            }
        }
    }
    std::move_backward(block->rows + offset, block->rows + block->size,
                       block->rows + block->size + 1);
    row->enterHolder(block);
    row->m_offsetHint = quint8(offset);
    block->visible += row->m_Visible;
    block->unsettled += row->m_unsettled;
    m_unsettledTotal += row->m_unsettled;
    m_visibleTotal += row->m_Visible;
    block->rows[offset] = std::move(row);
    ++block->size;
    ++m_size;
    sizeChanged(block);
}

void RowSequence::leave(lsNode *row, qint32 index) {
    row->m_unsettled = false;
    row->m_keyed = false;
    row->m_keyPinned = false;
    row->leaveSequence(index);
}

void RowSequence::removeRun(qint32 first, qint32 count, IndexPuts &puts) {
    if (count <= 0 || first < 1 || first + count - 1 > m_size)
        return;
    const Place place = placeOf(first);
    const qint32 junction = indexOf(place.block);
    qint32 blockIndex = junction, offset = place.offset, rank = first;
    // The rows are let go of only at the end: one may be the last owner of others, and their
    // ends must not run while the blocks are half changed.
    std::vector<lsNodePtr> released;
    released.reserve(size_t(count));
    while (count > 0) {
        RowBlock *block = m_blocks[size_t(blockIndex)].get();
        const qint32 take = std::min(count, block->size - offset);
        for (qint32 i = offset; i < offset + take; ++i) {
            lsNode *row = block->rows[i].get();
            block->visible -= row->m_Visible;
            m_visibleTotal -= row->m_Visible;
            block->unsettled -= row->m_unsettled;
            m_unsettledTotal -= row->m_unsettled;
            leave(row, puts.take(row, rank++));
            released.push_back(std::move(block->rows[i]));
        }
        std::move(block->rows + offset + take, block->rows + block->size, block->rows + offset);
        block->size -= take;
        m_size -= take;
        count -= take;
        sizeChanged(block);
        if (block->size == 0)
            eraseBlock(blockIndex);
        else
            ++blockIndex;
        offset = 0;
    }
    // Keep blocks from thinning out where the run was cut.
    for (const qint32 b : {junction - 1, junction}) {
        if (b >= 0 && size_t(b) < m_blocks.size())
            mergeWithNext(m_blocks[size_t(b)].get());
    }
}

void RowSequence::mergeWithNext(RowBlock *block) {
    const size_t next = size_t(indexOf(block)) + 1;
    if (next >= m_blocks.size() || block->size + m_blocks[next]->size > RowBlock::kCapacity * 3 / 4)
        return;
    RowBlock *from = m_blocks[next].get();
    for (qint32 i = 0; i < from->size; ++i) {
        from->rows[i]->m_holder = block;
        block->rows[block->size++] = std::move(from->rows[i]);
    }
    block->visible += from->visible;
    block->unsettled += from->unsettled;
    eraseBlock(qint32(next));
}

void RowSequence::clear(IndexPuts &puts) {
    std::vector<lsNodePtr> released;
    released.reserve(size_t(m_size));
    qint32 rank = 1;
    for (const auto &block : m_blocks) {
        for (qint32 i = 0; i < block->size; ++i) {
            leave(block->rows[i].get(), puts.take(block->rows[i].get(), rank++));
            released.push_back(std::move(block->rows[i]));
        }
    }
    m_blocks.clear();
    blocksChanged(0);
    m_size = 0;
    m_visibleTotal = 0;
    m_unsettledTotal = 0;
}

qint32 RowSequence::visibleUpTo(qint32 rank) const {
    if (rank <= 0)
        return 0;
    if (rank >= m_size)
        return m_visibleTotal;
    const Place place = placeOf(rank);
    const qint32 b = indexOf(place.block);
    ensureVisibleStarts(b);
    qint32 count = m_visibleStarts[size_t(b)];
    for (qint32 i = 0; i <= place.offset; ++i)
        count += place.block->rows[i]->m_Visible;
    return count;
}

size_t RowSequence::blockOfVisible(qint32 k, qint32 &before) const {
    const qint32 blocks = qint32(m_blocks.size());
    while (m_visibleValid < blocks) {
        const qint32 last = m_visibleValid - 1;
        if (last >= 0 && m_visibleStarts[size_t(last)] + m_blocks[size_t(last)]->visible >= k)
            break;
        ensureVisibleStarts(m_visibleValid);
    }
    const auto begin = m_visibleStarts.begin(), end = begin + m_visibleValid;
    // Earlier blocks may have no visible row and share this start: take the last of them, the
    // one that holds the k-th visible row.
    const size_t b = size_t(std::upper_bound(begin, end, k - 1) - begin) - 1;
    before = k - 1 - m_visibleStarts[b];
    return b;
}

lsNode *RowSequence::visibleRow(qint32 k) const {
    if (k < 1 || k > m_visibleTotal)
        return nullptr;
    qint32 left = 0;
    const RowBlock *block = m_blocks[blockOfVisible(k, left)].get();
    for (qint32 i = 0; i < block->size; ++i) {
        if (block->rows[i]->m_Visible && left-- == 0)
            return block->rows[i].get();
    }
    assert(false && "visible counts out of step");
    return nullptr;
}

void RowSequence::visibleRows(qint32 k, qint32 count, std::vector<lsNodePtr> &out) const {
    if (k < 1 || k > m_visibleTotal)
        return;
    qint32 skip = 0;
    for (size_t b = blockOfVisible(k, skip); b < m_blocks.size() && count > 0; ++b) {
        const RowBlock &block = *m_blocks[b];
        for (qint32 i = 0; i < block.size && count > 0; ++i) {
            if (!block.rows[i]->m_Visible)
                continue;
            if (skip > 0) {
                --skip;
                continue;
            }
            out.push_back(block.rows[i]);
            --count;
        }
    }
}

void RowSequence::unsettle(lsNode *row) {
    if (!row->m_inSequence)
        return;
    if (!row->m_unsettled) {
        row->m_unsettled = true;
        RowBlock *block = blockOf(row);
        ++block->unsettled;
        ++block->sequence->m_unsettledTotal;
    }
}

void RowSequence::settle(lsNode *row) {
    if (!row->m_inSequence)
        return;
    if (row->m_unsettled) {
        row->m_unsettled = false;
        RowBlock *block = blockOf(row);
        --block->unsettled;
        --block->sequence->m_unsettledTotal;
    }
}

lsNode *RowSequence::firstUnsettledFrom(qint32 from) const {
    if (from < 1)
        from = 1;
    if (from > m_size || m_unsettledTotal == 0)
        return nullptr;
    const Place place = placeOf(from);
    for (size_t b = size_t(indexOf(place.block)); b < m_blocks.size(); ++b) {
        const RowBlock *block = m_blocks[b].get();
        if (block->unsettled == 0)
            continue;
        for (qint32 i = block == place.block ? place.offset : 0; i < block->size; ++i) {
            if (block->rows[i]->m_unsettled)
                return block->rows[i].get();
        }
    }
    return nullptr;
}

void RowSequence::visibleChanged(const lsNode *row, bool visible) {
    RowBlock *block = blockOf(row);
    RowSequence *self = block->sequence;
    const qint32 delta = visible ? 1 : -1;
    block->visible += delta;
    self->m_visibleTotal += delta;
    if (block->index < self->m_indexValid || self->m_visibleValid > self->m_indexValid)
        self->m_visibleValid = std::min(self->m_visibleValid, self->indexOf(block) + 1);
}

void RowSequence::check() const {
#ifndef NDEBUG
    qint32 rows = 0, visible = 0, unsettled = 0;
    for (size_t b = 0; b < m_blocks.size(); ++b) {
        const RowBlock *block = m_blocks[b].get();
        assert(block->owner == &m_owner && block->sequence == this &&
               (qint32(b) >= m_indexValid || block->index == qint32(b)));
        assert(block->size >= 1 && block->size <= RowBlock::kCapacity);
        qint32 blockVisible = 0, blockUnsettled = 0;
        for (qint32 i = 0; i < block->size; ++i) {
            const lsNode *row = block->rows[i].get();
            assert(row && row->m_inSequence && blockOf(row) == block);
            blockVisible += row->m_Visible;
            blockUnsettled += row->m_unsettled;
        }
        assert(block->visible == blockVisible && block->unsettled == blockUnsettled);
        if (qint32(b) < m_startsValid)
            assert(m_starts[b] == rows);
        if (qint32(b) < m_visibleValid)
            assert(m_visibleStarts[b] == visible);
        rows += block->size;
        visible += blockVisible;
        unsettled += blockUnsettled;
    }
    assert(rows == m_size && visible == m_visibleTotal && unsettled == m_unsettledTotal);
#endif
}
