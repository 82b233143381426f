// The node collection.
#include "ErrorOf.h"
#include "lsNodes.h"

#include <gtest/gtest.h>

namespace {

// Adds rows named "key" (top level, one after another) or "parent/key" (last child of parent);
// every row's text is its key.
void build(lsNodes &nodes, std::initializer_list<QString> rows) {
    QString lastTop;
    for (const QString &row : rows) {
        const QStringList parts = row.split('/');
        if (parts.size() == 2) {
            nodes.Add(parts[0], lsChild, parts[1], parts[1]);
        } else {
            nodes.Add(lastTop, lsNext, row, row);
            lastTop = row;
        }
    }
}

// Placing, removing, walking, opening and selecting are held to the plain implementation by
// test_equivalence.cpp; these cases cover what its scripts do not reach: a list as a relative,
// paths, rows freed after a duplicate key or a clear, and more rows than the counter holds.
TEST(Nodes, ListRelativeDuplicateKeysPathsAndFreeing) {
    std::weak_ptr<lsNode> orphan, other;
    {
        lsNodes nodes;
        build(nodes, {"A", "A/A1", "B"});
        // A list names no row: the new row goes under the first one.
        EXPECT_EQ(nodes.Add(QVariantList{}, lsChild, "N", "N")->Parent(), nodes.Item("A"));
        EXPECT_EQ(nodes.FindPath(nodes.Item("N")), "A\\N");
        EXPECT_EQ(nodes.FindPath(nullptr), "");
        other = nodes.Item("A1");
        EXPECT_EQ(errorOf([&] { nodes.Add("A", lsChild, "b", "dup"); }),
                  TreeListError::DuplicateKey);
        orphan = nodes.Item("A")->LastChild();
        ASSERT_FALSE(orphan.expired());
        EXPECT_EQ(orphan.lock()->Text(), "dup");
        EXPECT_EQ(nodes.Count(), 5);
        EXPECT_FALSE(nodes.at(5));
        nodes.Clear();
        EXPECT_FALSE(nodes.Count() || nodes.Root());
        EXPECT_TRUE(orphan.expired() && other.expired());

        build(nodes, {"A"});
        EXPECT_ANY_THROW(nodes.Add("A", lsPrevious, "A", "dupRoot"));
        orphan = nodes.Root();
        EXPECT_EQ(orphan.lock()->Text(), "dupRoot");
    }
    EXPECT_TRUE(orphan.expired());
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
