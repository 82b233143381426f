// The node collection: placing, numbering, removing, walking, opening and selecting rows. Links,
// positions and visibility after each change are checked over random runs in
// test_lsNodes_random.cpp; these cases pin down what a given call must do.
#include "ErrorOf.h"
#include "lsNodes.h"

#include <functional>
#include <gtest/gtest.h>
#include <random>

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

QString texts(const lsNodes &nodes) {
    QStringList out;
    for (const lsNodePtr &node : nodes)
        out << node->Text();
    return out.join(' ');
}

TEST(NodesAdd, PlacesRowsByRelationship) {
    // Relationship and relative, then the rows in order and the new row's parent.
    const std::tuple<lsRelationshipConstants, QVariant, QString, QString> cases[] = {
        {lsFirst, "B", "A B B1 N C", ""},
        {lsLast, "b", "A B B1 N C", ""},
        {lsNext, 2, "A B B1 N C", ""},
        {lsNext, "B1", "A B B1 N C", "B"},
        {lsPrevious, "B", "A N B B1 C", ""},
        {lsPrevious, QVariant(), "N A B B1 C", ""},
        {lsChild, "B", "A B B1 N C", "B"},
        {lsChild, "unknown", "A N B B1 C", "A"},
        {lsChild, QVariantList{}, "A N B B1 C", "A"},
    };
    for (const auto &[relationship, relative, order, parent] : cases) {
        SCOPED_TRACE(order.toStdString() + " from " + relative.toString().toStdString());
        lsNodes nodes;
        build(nodes, {"A", "B", "B/B1", "C"});
        const lsNodePtr n = nodes.Add(relative, relationship, "N", "N");
        EXPECT_EQ(texts(nodes), order);
        EXPECT_EQ(n->Parent() ? n->Parent()->Text() : "", parent);
    }
}

TEST(NodesAdd, EmptyTreeNumberingAndBadInput) {
    lsNodes nodes;
    EXPECT_EQ(nodes.ReIndex(), 1);
    qint32 unknownRelationship = 7;
    EXPECT_FALSE(nodes.Add("nothing", unknownRelationship, "K", "first")->Expanded());
    build(nodes, {"A", "B"});
    EXPECT_EQ(nodes.ReIndex(), 4);
    EXPECT_EQ(errorOf([&] { nodes.Add("A", unknownRelationship, "X"); }),
              TreeListError::InvalidArgument);
    EXPECT_EQ(errorOf([&] { nodes.Add("A", lsChild, QVariantList{1}); }),
              TreeListError::TypeMismatch);
    EXPECT_EQ(texts(nodes), "first A B");
    EXPECT_FALSE(nodes.Item("missing") || nodes.Nodes(0));
}

TEST(NodesAdd, DuplicateKeyLinksAndCountsTheRowThenFailsAndClearStillEnds) {
    std::weak_ptr<lsNode> orphan, other;
    {
        lsNodes nodes;
        build(nodes, {"A", "A/A1", "B"});
        other = nodes.Item("A1");
        EXPECT_EQ(errorOf([&] { nodes.Add("A", lsChild, "b", "dup"); }),
                  TreeListError::DuplicateKey);
        orphan = nodes.Item("A")->LastChild();
        ASSERT_FALSE(orphan.expired());
        EXPECT_EQ(orphan.lock()->Text(), "dup");
        EXPECT_EQ(nodes.Count(), 4);
        EXPECT_FALSE(nodes.at(4));
        EXPECT_EQ(errorOf([&] { nodes.Add("B", lsNext, "a", "dup2"); }),
                  TreeListError::DuplicateKey);
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

TEST(NodesRemove, SubtreesSelectionAndClear) {
    lsNodes nodes;
    build(nodes, {"A", "A/A1", "A/A2", "A1/A1a", "B", "C"});
    const lsNodePtr a = nodes.Item("A"), a1 = nodes.Item("A1");
    nodes.setExpanded(a, true);
    nodes.Item("A2")->Cells()->Add("x", 1);
    nodes.Selected(nodes.Item("A2")->Index(), 1);
    ASSERT_TRUE(nodes.SelectedRow() && nodes.SelectedCell());

    EXPECT_FALSE(nodes.Remove("zz") || nodes.Remove(99));
    EXPECT_TRUE(nodes.Remove("A2"));
    EXPECT_FALSE(nodes.SelectedRow() || nodes.SelectedCell());
    EXPECT_TRUE(nodes.Remove(1));
    EXPECT_EQ(texts(nodes), "B C");
    EXPECT_FALSE(a->Child() || a->NextSibling() || a1->Parent());

    nodes.Clear();
    EXPECT_EQ(nodes.begin(), nodes.end());
    EXPECT_FALSE(nodes.Root() || nodes.Tail() || nodes.GetNextNode());
}

TEST(NodesRemove, MoreRowsThanTheCounterHoldsOverflowWithoutLoss) {
    lsNodes nodes;
    const lsNodePtr top = nodes.Add();
    for (int i = 0; i < 32767; ++i)
        nodes.Add(1, lsChild);
    EXPECT_EQ(errorOf([&] { nodes.Remove(2); }), TreeListError::Overflow);
    EXPECT_EQ(errorOf([&] { nodes.Clear(); }), TreeListError::Overflow);
    EXPECT_EQ(nodes.Count(), 32768);
    EXPECT_EQ(nodes.Tail()->Index(), 32768);
}

TEST(NodesWalk, NextPreviousSiblingsAndPaths) {
    lsNodes nodes;
    build(nodes, {"A", "A/A1", "A1/A1a", "B"});
    auto walk = [&](bool onlyVisible) {
        QStringList out;
        for (lsNodePtr n = nodes.GetNextNode(onlyVisible); n; n = nodes.GetNextNode(onlyVisible))
            out << n->Text();
        return out.join(' ');
    };
    EXPECT_EQ(walk(false), "A A1 A1a B");
    EXPECT_EQ(walk(true), "A B");
    EXPECT_EQ(nodes.SetFirstNode("nothing"), nodes.Root());
    EXPECT_EQ(nodes.SetFirstNode("A1")->Text(), "A1");
    EXPECT_EQ(walk(false), "A1a B");
    EXPECT_FALSE(nodes.Expanded(nullptr) || nodes.SetVisibility(nullptr));

    EXPECT_FALSE(nodes.GetPrevNode(nodes.Item(1)) || nodes.GetPrevNode(nullptr));
    EXPECT_EQ(nodes.GetPrevNode(nodes.Item(4), false), nodes.Item(3));
    EXPECT_EQ(nodes.GetPrevNode(nodes.Item(4)), nodes.Item(1));
    nodes.Item(2)->setDisplayed(true);
    EXPECT_EQ(nodes.GetPrevNode(nodes.Item(4)), nodes.Item(2));

    EXPECT_EQ(nodes.GetLastSibling(nodes.Root()), nodes.Item("B"));
    EXPECT_FALSE(nodes.GetLastSibling(nodes.Item("B")));
    EXPECT_EQ(nodes.FindPath(nodes.Item("A1a")), "A\\A1\\A1a");
    EXPECT_EQ(nodes.FindPath(nullptr), "");
}

// Openings and closings are recomputed when a visibility is next read; a host's puts, adds and
// removals in between must find and leave the values each call would have left at once.
TEST(NodesExpand, PutOffRecomputationKeepsTheOrderOfEvents) {
    // What happens after opening c and then N, then every row's Visible (g last, also once
    // removed).
    const std::tuple<std::function<void(lsNodes &)>, QString, bool> cases[] = {
        {[](lsNodes &n) { n.Item("c")->setExpanded(false); }, "1 1 1 1", true},
        {[](lsNodes &n) { n.Item("c")->setVisible(false); }, "1 0 1 1", true},
        {[](lsNodes &n) { n.Remove("g"); }, "1 1 1", true},
        {[](lsNodes &n) { n.Add("c", lsChild, "h"); }, "1 1 1 1 1", true},
        {[](lsNodes &n) { n.setExpanded(n.Item("N"), false); }, "1 0 0 1", false},
    };
    for (const auto &[between, visible, gVisible] : cases) {
        SCOPED_TRACE(visible.toStdString());
        lsNodes nodes;
        build(nodes, {"N", "N/c", "c/g", "S"});
        const lsNodePtr g = nodes.Item("g");
        nodes.setExpanded(nodes.Item("c"), true);
        nodes.setExpanded(nodes.Item("N"), true);
        between(nodes);
        QStringList out;
        for (const lsNodePtr &row : nodes)
            out << QString::number(row->Visible());
        EXPECT_EQ(out.join(' '), visible);
        EXPECT_EQ(g->Visible(), gVisible);
    }
}

TEST(NodesSelect, VisibleRowsOnly) {
    lsNodes nodes;
    build(nodes, {"A", "A/A1", "B", "C"});
    for (const lsNodePtr &n : nodes) {
        n->Cells()->Add("1", 1);
        n->Cells()->Add("2", 2);
    }
    const lsNodePtr a1 = nodes.Item("A1");
    nodes.setExpanded(nodes.Root(), true);
    EXPECT_EQ(nodes.Selected(2, 2), 0);
    EXPECT_EQ(nodes.SelectedCell(), a1->Cells()->at(2));
    EXPECT_EQ(nodes.Selected(3, 1, true), 1);
    EXPECT_TRUE(a1->Selected() && a1->Cells()->at(2)->Selected());
    EXPECT_EQ(nodes.Selected(1, 1), 2);
    EXPECT_FALSE(a1->Selected() || nodes.Item("B")->Cells()->at(1)->Selected());

    // Rows hidden under a closed branch keep their flags.
    nodes.Selected(2, 1, true);
    nodes.setExpanded(nodes.Root(), false);
    EXPECT_EQ(nodes.Selected(2, 1), 1);
    EXPECT_EQ(nodes.SelectedRow(), a1);
    EXPECT_TRUE(a1->Selected() && !nodes.Root()->Selected());
    nodes.ClearSelection();
    EXPECT_FALSE(nodes.SelectedRow() || nodes.SelectedCell());
    EXPECT_TRUE(a1->Selected());
}

TEST(NodesRemove, ClearEndsLikeRemovingTheFirstRowUntilNoneIsLeft) {
    const auto grow = [](lsNodes &nodes, unsigned seed) {
        std::mt19937 rng(seed);
        std::vector<lsNodePtr> rows;
        for (int i = 0; i < 300; ++i) {
            const qint32 relative = 1 + static_cast<qint32>(rng() % (nodes.Count() + 1));
            rows.push_back(nodes.Add(relative, lsRelationshipConstants(2 + rng() % 3),
                                     QStringLiteral("k%1").arg(i)));
        }
        return rows;
    };
    lsNodes cleared, removed;
    const std::vector<lsNodePtr> a = grow(cleared, 7), b = grow(removed, 7);
    cleared.Clear();
    while (removed.Count() > 0)
        removed.Remove(1);
    for (size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i]->Index(), b[i]->Index()) << i;
        EXPECT_TRUE(a[i]->Flag() && b[i]->Flag()) << i;
        EXPECT_FALSE(a[i]->Parent() || a[i]->Child() || a[i]->NextSibling() || a[i]->PrevSibling());
    }
}

} // namespace
