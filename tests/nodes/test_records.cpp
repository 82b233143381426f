// Cells, cell collections and single nodes.
#include "lsNode.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace {

int errorOf(const std::function<void()> &call) {
    try {
        call();
    } catch (const TreeListError &e) {
        return e.number();
    }
    return 0;
}

TEST(Records, DefaultsAndReset) {
    lsCell cell;
    cell.setWidth(7);
    cell.setTag(3);
    cell.Class_Initialize();
    EXPECT_EQ(cell.Width(), 80);
    EXPECT_EQ(cell.Index(), 1);
    EXPECT_EQ(cell.Appearance(), 1);
    EXPECT_EQ(cell.BackColor(), 0xFFFFFFu);
    EXPECT_TRUE(cell.Visible());
    for (const QVariant &v : {cell.Icon(), cell.Key(), cell.Tag()})
        EXPECT_TRUE(v.isValid() && v.toString().isEmpty());

    lsNode node;
    EXPECT_TRUE(node.Expanded() && node.Visible());
    EXPECT_EQ(node.Index(), 0);
    EXPECT_FALSE(node.Key().isValid());
    EXPECT_EQ(node.Width(), 0);
    const lsCellsPtr first = node.Cells();
    node.setCells(nullptr);
    ASSERT_TRUE(node.Cells());
    EXPECT_NE(node.Cells(), first);
    EXPECT_EQ(node.Cells()->Count(), 0);
}

TEST(Records, CellsLieSideBySideInInsertionOrder) {
    lsCells cells;
    const lsCellPtr a = cells.Add("A", 1);
    const lsCellPtr b = cells.Add("B", 9, 30);
    const lsCellPtr c = cells.Add("C", 2);
    EXPECT_EQ(a->Width(), 120);
    EXPECT_EQ(std::vector<qint32>({a->Left(), b->Left(), c->Left()}),
              std::vector<qint32>({0, 120, 150}));
    EXPECT_EQ(cells.Item(2), b);
    cells.Remove(1);
    EXPECT_EQ(cells.Item(1), b);
    EXPECT_EQ(b->Left(), 120);
    EXPECT_EQ(c->Left(), 150);
}

TEST(Records, CellCollectionErrorsKeepTheData) {
    lsCells cells;
    cells.Add("A", 1);
    cells.Add("B", 2);
    cells.Add("C", 3, 120, "Key");
    struct Case {
        const char *what;
        std::function<void()> call;
        int error;
    };
    const Case cases[] = {
        {"empty keys twice", [&] { cells.Add("D", 4, 1, ""); }, 0},
        {"duplicate key, other case", [&] { cells.Add("E", 5, 1, "kEY"); }, 457},
        {"unknown position", [&] { cells.Item(99); }, 5},
        {"unknown key", [&] { cells.Remove("none"); }, 5},
        {"wrong type", [&] { cells.Item(QVariantList{}); }, 13},
    };
    for (const Case &c : cases)
        EXPECT_EQ(errorOf(c.call), c.error) << c.what;
    EXPECT_EQ(cells.Count(), 4);
    EXPECT_EQ(cells.Item("key")->Title(), "C");
}

TEST(Records, ArithmeticPastItsWidthOverflows) {
    lsCells cells;
    cells.Add("A", 1, 10);
    cells.Add("B", 2, std::numeric_limits<qint32>::max());
    EXPECT_EQ(errorOf([&] { cells.Add("C", 3); }), TreeListError::Overflow);
    EXPECT_EQ(cells.Count(), 2);

    lsNode node;
    node.Cells()->Add("A", 1, 30);
    node.Cells()->Add("B", 2, 40);
    EXPECT_EQ(node.Width(), 70);
    node.Cells()->at(1)->setWidth(std::numeric_limits<qint32>::max());
    EXPECT_EQ(errorOf([&] { node.Width(); }), TreeListError::Overflow);
}

TEST(Records, LongSiblingChainIsFreedWithoutDeepRecursion) {
    auto first = std::make_shared<lsNode>();
    lsNodePtr tail = first;
    for (int i = 0; i < 200000; ++i) {
        auto next = std::make_shared<lsNode>();
        next->setPrevSibling(tail);
        tail->setNextSibling(next);
        tail = next;
    }
    const std::weak_ptr<lsNode> last = tail;
    tail.reset();
    first.reset();
    EXPECT_TRUE(last.expired());
}

} // namespace
