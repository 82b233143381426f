// Cells, cell collections and single nodes.
#include "ErrorOf.h"
#include "lsNode.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>

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
