// Cells, cell collections, single nodes, and the node collection where its randomized
// comparison does not reach.
#include "ErrorOf.h"
#include "lsNodes.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

TEST(Records, CellDefaultsAndReset) {
    lsCell cell;
    cell.setWidth(7);
    cell.setTag(3);
    cell.Class_Initialize();
    EXPECT_EQ(cell.Width(), 80);
    // The Variant fields hold empty text, not "no value".
    for (const QVariant &v : {cell.Icon(), cell.Key(), cell.Tag()})
        EXPECT_TRUE(v.isValid() && v.toString().isEmpty());
    // The column number is 16-bit: a wider put fails and changes nothing.
    EXPECT_EQ(errorOf([&] { cell.setIndex(40000); }), TreeListError::Overflow);
    EXPECT_EQ(cell.Index(), 1);
}

// Placing, removing and keys of cells are held to a plain list below; these are the sums past
// 32 bits and the lookups that fail.
TEST(Records, WidthSumsOverflowAndFailedLookupsKeepTheData) {
    constexpr qint32 Max = std::numeric_limits<qint32>::max();
    lsCells cells;
    cells.Add("A", 1);
    cells.Add("B", 2, 30, "Key");
    EXPECT_EQ(cells.Item(2)->Left(), 120); // the default width
    const std::pair<int, std::function<void()>> cases[] = {
        {5, [&] { cells.Item(99); }},              // unknown position
        {5, [&] { cells.Remove("none"); }},        // unknown key
        {13, [&] { cells.Item(QVariantList{}); }}, // neither position nor key
    };
    for (size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(errorOf(cases[i].second), cases[i].first) << "case " << i;
    cells.Item(2)->setWidth(Max);
    EXPECT_EQ(errorOf([&] { cells.Add("D", 3); }), TreeListError::Overflow);
    EXPECT_EQ(cells.Count(), 2);
    EXPECT_EQ(cells.Item("key")->Title(), "B");

    lsNode node;
    node.Cells()->Add("A", 1, 30);
    node.Cells()->Add("B", 2, 40);
    EXPECT_EQ(node.Width(), 70);
    node.Cells()->at(1)->setWidth(Max);
    EXPECT_EQ(errorOf([&] { node.Width(); }), TreeListError::Overflow);
}

// Cells live in slots of their collection (a row's own collection shares the row's allocation):
// rows past the first slots, removals while a host holds a cell or ever held one (the cell keeps
// its slot) or not (later cells move up), keys after such moves, and edges and widths past 16 bits
// must read as a plain list of separate cells would.
TEST(Records, CellSlotsReadLikeAPlainList) {
    struct Plain {
        QString title, key;
        qint32 left, width;
    };
    for (const bool ofRow : {false, true}) {
        SCOPED_TRACE(ofRow ? "a row's cells" : "a collection of its own");
        std::mt19937 rng(5);
        const auto pick = [&](int n) { return int(rng() % unsigned(n)); };
        auto rows = std::make_unique<lsNodes>();
        lsNodePtr row = rows->Add(emptyText(), lsLast);
        lsCellsPtr cells = ofRow ? row->Cells() : std::make_shared<lsCells>();
        std::vector<Plain> plain;
        std::vector<std::pair<lsCellPtr, QString>> held;
        for (int step = 0; step < 3000; ++step) {
            SCOPED_TRACE(step);
            const QString key = pick(3) ? QString() : QString("k%1").arg(pick(12));
            const bool taken =
                !key.isEmpty() && std::any_of(plain.begin(), plain.end(), [&](auto &c) {
                    return c.key.compare(key, Qt::CaseInsensitive) == 0;
                });
            const int op = plain.size() > 20 ? 3 + pick(7) : pick(10);
            if (op < 5) {
                const QString title = QString::number(step);
                const qint32 width = pick(4) ? 10 + pick(200) : 20000 + pick(40000);
                const qint32 left = plain.empty() ? 0 : plain.back().left + plain.back().width;
                const int error = errorOf([&] {
                    const QVariant k = pick(2) ? key : key.toUpper();
                    if (pick(2)) {
                        cells->append(title, 1, width, k);
                    } else if (const lsCellPtr cell = cells->Add(title, 1, width, k);
                               pick(3) == 0) {
                        held.emplace_back(cell, title);
                    }
                });
                EXPECT_EQ(error, taken ? 457 : 0);
                if (!taken)
                    plain.push_back({title, key, left, width});
            } else if (op < 8 && !plain.empty()) {
                const int position = 1 + pick(int(plain.size()));
                if (pick(2) || plain[size_t(position - 1)].key.isEmpty())
                    cells->Remove(position);
                else
                    cells->Remove(plain[size_t(position - 1)].key);
                plain.erase(plain.begin() + position - 1);
            } else if (op == 8) {
                held.clear();
            } else if (pick(8) == 0) {
                cells->Clear();
                plain.clear();
            }
            ASSERT_EQ(cells->Count(), qint32(plain.size()));
            for (size_t i = 0; i < plain.size(); ++i) {
                const lsCell *cell = cells->cell(qint32(i + 1));
                ASSERT_EQ(std::tuple(cell->Title(), cell->Left(), cell->Width()),
                          std::tuple(plain[i].title, plain[i].left, plain[i].width));
                if (!plain[i].key.isEmpty() && step % 50 == 0) {
                    ASSERT_EQ(cells->Item(plain[i].key)->Title(), plain[i].title);
                }
            }
            for (const auto &[cell, title] : held)
                ASSERT_EQ(cell->Title(), title);
        }
        // A held cell keeps its collection, and its values, after everything else let go: the
        // row's cells outlive the row's removal and the end of its collection.
        held.resize(std::min<size_t>(held.size(), 1));
        held.emplace_back(cells->Add("last", 1), "last");
        cells.reset();
        rows->Remove(1);
        row.reset();
        rows.reset();
        for (const auto &[cell, title] : held)
            EXPECT_EQ(cell->Title(), title);
    }
}

// A row's own cells handed back to it stay its own (holding them by pointer would make the row
// own itself and never be freed: the sanitizer build checks), and other cells may take their place.
// A removed cell keeps its slot only while a pointer reaches it or a later cell; pointers to
// earlier cells (a selection held for long) pin nothing after them. Whether the cells after a
// removal moved up shows in where the cell now at that position lives.
TEST(Records, OnlyHeldCellsPinTheirSlots) {
    struct Case {
        std::vector<int> held, dropped;
        int removed;
        bool movedUp;
        bool releaseAndRemoveLast; // then let the held go and remove the last cell
    };
    const Case cases[] = {
        {{}, {}, 2, true, false},
        {{1}, {3, 4}, 2, true, false}, // an earlier cell held, later ones handed out and dropped
        {{3}, {}, 2, false, false},
        {{5}, {1}, 2, false, false},
        {{2}, {}, 2, true, true}, // the held removed cell gives its slot back once let go
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(i);
        const Case &c = cases[i];
        auto cells = std::make_shared<lsCells>();
        for (const char *title : {"A", "B", "C", "D", "E"})
            cells->append(title, 1);
        std::vector<lsCellPtr> held;
        for (const int position : c.held)
            held.push_back(cells->at(position));
        for (const int position : c.dropped)
            EXPECT_TRUE(cells->at(position));
        const lsCell *slot = cells->cell(c.removed);
        cells->Remove(c.removed);
        if (c.releaseAndRemoveLast) {
            held.clear();
            cells->Remove(cells->Count());
        }
        EXPECT_EQ(cells->cell(c.removed) == slot, c.movedUp);
        EXPECT_EQ(cells->cell(c.removed)->Title(), "C");
        for (size_t h = 0; h < held.size(); ++h)
            EXPECT_EQ(held[h]->Title(), QString(QChar('A' + c.held[h] - 1)));
    }
}

TEST(Records, RowsTakeOtherCellsAndTheirOwnBack) {
    lsNodes rows;
    const lsNodePtr row = rows.Add(emptyText(), lsLast, "A", "Alpha");
    const lsCellsPtr own = row->Cells();
    own->Add("mine", 1);
    rows.Add("a", lsChild, "B", "Beta");
    EXPECT_EQ(std::tuple(rows.FindPath(rows.Item("B")), rows.FindPath(nullptr)),
              std::tuple(QString("Alpha\\Beta"), QString()));
    const auto other = std::make_shared<lsCells>();
    other->Add("other", 1);
    row->setCells(other);
    EXPECT_EQ(row->Cells()->at(1)->Title(), "other");
    row->setCells(own);
    EXPECT_EQ(row->Cells(), own);
    EXPECT_EQ(row->borrowCells().cell(1)->Title(), "mine");
    row->setCells(nullptr);
    EXPECT_EQ(row->Cells()->Count(), 0);

    // Keys of every type read back as they were put; a number still finds its row as text.
    const QVariant keys[] = {QVariant(), QString(), QString(""), QString("Key"), 42, 2.5};
    for (const QVariant &key : keys) {
        row->setKey(key);
        EXPECT_EQ(row->Key(), key) << key.typeName();
        EXPECT_EQ(row->Key().typeId(), key.typeId());
    }
    EXPECT_EQ(rows.Item("a"), row);
}

TEST(Records, LongSiblingChainIsFreedWithoutDeepRecursion) {
    auto first = std::make_shared<lsNode>();
    std::weak_ptr<lsNode> last = first;
    for (int i = 0; i < 200000; ++i) {
        auto next = std::make_shared<lsNode>();
        next->setPrevSibling(last.lock());
        last.lock()->setNextSibling(next);
        last = next;
    }
    first.reset();
    EXPECT_TRUE(last.expired());
}

TEST(Nodes, MoreRowsThanTheCounterHoldsOverflowWithoutLoss) {
    lsNodes nodes;
    const lsNodePtr top = nodes.Add();
    for (int i = 0; i < 32767; ++i)
        nodes.Add(1, lsChild);
    EXPECT_EQ(errorOf([&] { nodes.Remove(2); }), TreeListError::Overflow);
    EXPECT_EQ(errorOf([&] { nodes.Clear(); }), TreeListError::Overflow);
    EXPECT_EQ(nodes.Count(), 32768);
    EXPECT_EQ(nodes.Tail()->Index(), 32768);
}

} // namespace
