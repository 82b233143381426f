// Cells, cell collections and single nodes.
#include "ErrorOf.h"
#include "lsNode.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

TEST(Records, DefaultsAndReset) {
    lsCell cell;
    cell.setWidth(7);
    cell.setTag(3);
    cell.Class_Initialize();
    EXPECT_EQ(
        std::tuple(cell.Width(), cell.Index(), cell.Appearance(), cell.BackColor(), cell.Visible()),
        std::tuple(80, 1, 1, 0xFFFFFFu, true));
    // The Variant fields hold empty text, not "no value".
    for (const QVariant &v : {cell.Icon(), cell.Key(), cell.Tag()})
        EXPECT_TRUE(v.isValid() && v.toString().isEmpty());
    // The column number is 16-bit: a wider put fails and changes nothing.
    EXPECT_EQ(errorOf([&] { cell.setIndex(40000); }), TreeListError::Overflow);
    EXPECT_EQ(cell.Index(), 1);

    lsNode node;
    EXPECT_TRUE(node.Expanded() && node.Visible() && !node.Key().isValid());
    node.setCells(nullptr);
    ASSERT_TRUE(node.Cells());
    EXPECT_EQ(node.Width(), 0);
}

TEST(Records, CellsLieSideBySideAndSumsPastTheirWidthOverflow) {
    constexpr qint32 Max = std::numeric_limits<qint32>::max();
    lsCells cells;
    const lsCellPtr a = cells.Add("A", 1);
    const lsCellPtr b = cells.Add("B", 9, 30);
    const lsCellPtr c = cells.Add("C", 2);
    EXPECT_EQ(std::tuple(a->Left(), b->Left(), c->Left()), std::tuple(0, 120, 150));
    cells.Remove(1);
    EXPECT_EQ(cells.Item(1), b);
    EXPECT_EQ(c->Left(), 150);
    c->setWidth(Max);
    EXPECT_EQ(errorOf([&] { cells.Add("D", 3); }), TreeListError::Overflow);
    EXPECT_EQ(cells.Count(), 2);

    lsNode node;
    node.Cells()->Add("A", 1, 30);
    node.Cells()->Add("B", 2, 40);
    EXPECT_EQ(node.Width(), 70);
    node.Cells()->at(1)->setWidth(Max);
    EXPECT_EQ(errorOf([&] { node.Width(); }), TreeListError::Overflow);
}

TEST(Records, CellCollectionErrorsKeepTheData) {
    lsCells cells;
    cells.Add("A", 1);
    cells.Add("B", 2);
    cells.Add("C", 3, 120, "Key");
    const std::pair<int, std::function<void()>> cases[] = {
        {0, [&] { cells.Add("D", 4, 1, ""); }},      // empty keys may repeat
        {457, [&] { cells.Add("E", 5, 1, "kEY"); }}, // duplicate key in another case
        {5, [&] { cells.Item(99); }},                // unknown position
        {5, [&] { cells.Remove("none"); }},          // unknown key
        {13, [&] { cells.Item(QVariantList{}); }},   // neither position nor key
    };
    for (size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(errorOf(cases[i].second), cases[i].first) << "case " << i;
    EXPECT_EQ(cells.Count(), 4);
    EXPECT_EQ(cells.Item("key")->Title(), "C");
}

// Cells live in slots of their collection: rows past the first slots, removals while a host
// holds a cell (the cell keeps its slot) or not (later cells move up) and keys after such moves
// must read as a plain list of separate cells would.
TEST(Records, CellSlotsReadLikeAPlainList) {
    std::mt19937 rng(5);
    const auto pick = [&](int n) { return int(rng() % unsigned(n)); };
    auto cells = std::make_shared<lsCells>();
    std::vector<std::pair<QString, QString>> plain; // title, key
    std::vector<std::pair<lsCellPtr, QString>> held;
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(step);
        const QString key = pick(3) ? QString() : QString("k%1").arg(pick(12));
        const bool taken = !key.isEmpty() && std::any_of(plain.begin(), plain.end(), [&](auto &c) {
            return c.second.compare(key, Qt::CaseInsensitive) == 0;
        });
        const int op = plain.size() > 20 ? 3 + pick(7) : pick(10);
        if (op < 5) {
            const QString title = QString::number(step);
            const int error = errorOf([&] {
                const lsCellPtr cell = cells->Add(title, 1, 10, pick(2) ? key : key.toUpper());
                if (pick(3) == 0)
                    held.emplace_back(cell, title);
            });
            EXPECT_EQ(error, taken ? 457 : 0);
            if (!taken)
                plain.emplace_back(title, key);
        } else if (op < 8 && !plain.empty()) {
            const int position = 1 + pick(int(plain.size()));
            if (pick(2) || plain[size_t(position - 1)].second.isEmpty())
                cells->Remove(position);
            else
                cells->Remove(plain[size_t(position - 1)].second);
            plain.erase(plain.begin() + position - 1);
        } else if (op == 8) {
            held.clear();
        } else if (pick(8) == 0) {
            cells->Clear();
            plain.clear();
        }
        ASSERT_EQ(cells->Count(), qint32(plain.size()));
        for (size_t i = 0; i < plain.size(); ++i) {
            ASSERT_EQ(cells->at(qint32(i + 1))->Title(), plain[i].first);
            if (!plain[i].second.isEmpty()) {
                ASSERT_EQ(cells->Item(plain[i].second)->Title(), plain[i].first);
            }
        }
        for (const auto &[cell, title] : held)
            ASSERT_EQ(cell->Title(), title);
    }
    // A held cell keeps its collection, and its values, after everything else let go.
    held.resize(std::min<size_t>(held.size(), 1));
    cells.reset();
    for (const auto &[cell, title] : held)
        EXPECT_EQ(cell->Title(), title);
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

} // namespace
