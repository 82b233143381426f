// The node collection: placing, numbering, removing, walking, opening and selecting rows.
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

QString texts(const lsNodes &nodes) {
    QStringList out;
    for (const lsNodePtr &node : nodes)
        out << node->Text();
    return out.join(' ');
}

int errorOf(const std::function<void()> &call) {
    try {
        call();
    } catch (const TreeListError &e) {
        return e.number();
    }
    return 0;
}

TEST(NodesAdd, PlacesRowsByRelationship) {
    struct Case {
        qint32 relationship;
        QVariant relative;
        QString order;
        qint32 relationshipAfter;
        QString parent;
    };
    const Case cases[] = {
        {lsFirst, "B", "A B B1 N C", lsNext, ""},
        {lsLast, "b", "A B B1 N C", lsNext, ""},
        {lsNext, 2, "A B B1 N C", lsNext, ""},
        {lsNext, "B1", "A B B1 N C", lsNext, "B"},
        {lsPrevious, "B", "A N B B1 C", lsPrevious, ""},
        {lsPrevious, QVariant(), "N A B B1 C", lsPrevious, ""},
        {lsChild, "B", "A B B1 N C", lsChild, "B"},
        {lsChild, "unknown", "A N B B1 C", lsChild, "A"},
        {lsChild, QVariantList{}, "A N B B1 C", lsChild, "A"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.order.toStdString() + " from " + c.relative.toString().toStdString());
        lsNodes nodes;
        build(nodes, {"A", "B", "B/B1", "C"});
        qint32 relationship = c.relationship;
        const lsNodePtr n = nodes.Add(c.relative, relationship, "N", "N");
        EXPECT_EQ(texts(nodes), c.order);
        EXPECT_EQ(relationship, c.relationshipAfter);
        EXPECT_EQ(nodes.Count(), 5);
        EXPECT_EQ(nodes.Item(n->Index()), n);
        EXPECT_EQ(nodes.Root(), nodes.Item(1));
        EXPECT_EQ(nodes.Tail(), nodes.Item(5));
        const lsNodePtr parent = n->Parent();
        EXPECT_EQ(parent ? parent->Text() : "", c.parent);
        EXPECT_EQ(n->IdentLevel(), parent ? 1 : 0);
        if (parent) {
            EXPECT_EQ(parent->LastChild() == n, !n->NextSibling());
            EXPECT_EQ(n->Visible(), parent->Expanded());
        }
    }
}

TEST(NodesAdd, EmptyTreeNumberingAndBadInput) {
    lsNodes nodes;
    EXPECT_EQ(nodes.ReIndex(), 1);
    const lsNodePtr first = nodes.Add("nothing", lsPrevious, "K", "first");
    EXPECT_EQ(first->Index(), 1);
    EXPECT_FALSE(first->Expanded());
    EXPECT_EQ(nodes.Root(), first);
    EXPECT_EQ(nodes.Tail(), first);
    build(nodes, {"A", "B"});
    EXPECT_EQ(nodes.ReIndex(), 4);

    qint32 unknownRelationship = 7;
    EXPECT_EQ(errorOf([&] { nodes.Add("A", unknownRelationship, "X"); }),
              TreeListError::InvalidArgument);
    EXPECT_EQ(errorOf([&] { nodes.Add("A", lsChild, QVariantList{1}); }),
              TreeListError::TypeMismatch);
    EXPECT_EQ(nodes.Count(), 3);
    EXPECT_EQ(texts(nodes), "first A B");
    EXPECT_FALSE(nodes.Item("missing"));
    EXPECT_FALSE(nodes.Nodes(0));
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
        EXPECT_EQ(nodes.Count(), 0);
        EXPECT_FALSE(nodes.Root());
        EXPECT_TRUE(orphan.expired() && other.expired());

        build(nodes, {"A"});
        EXPECT_ANY_THROW(nodes.Add("A", lsPrevious, "A", "dupRoot"));
        orphan = nodes.Root();
        EXPECT_EQ(orphan.lock()->Text(), "dupRoot");
    }
    EXPECT_TRUE(orphan.expired());
}

TEST(NodesRemove, SubtreesSelectionAndRoot) {
    lsNodes nodes;
    build(nodes, {"A", "A/A1", "A/A2", "A1/A1a", "B", "C"});
    const lsNodePtr a = nodes.Item("A"), a1 = nodes.Item("A1");
    nodes.setExpanded(a, true);
    nodes.Item("A2")->Cells()->Add("x", 1);
    nodes.Selected(nodes.Item("A2")->Index(), 1);
    ASSERT_TRUE(nodes.SelectedRow() && nodes.SelectedCell());

    EXPECT_FALSE(nodes.Remove("zz"));
    EXPECT_FALSE(nodes.Remove(99));
    EXPECT_EQ(nodes.Count(), 6);
    EXPECT_TRUE(nodes.Remove("A2"));
    EXPECT_FALSE(nodes.SelectedRow() || nodes.SelectedCell());
    EXPECT_EQ(a->LastChild(), a1);
    EXPECT_FALSE(a1->NextSibling());

    EXPECT_TRUE(nodes.Remove(1));
    EXPECT_EQ(texts(nodes), "B C");
    EXPECT_EQ(nodes.Count(), 2);
    EXPECT_EQ(nodes.Root(), nodes.Item("B"));
    EXPECT_EQ(nodes.Item("C")->Index(), 2);
    EXPECT_EQ(nodes.Tail(), nodes.Item("C"));
    EXPECT_FALSE(a->Child() || a->NextSibling() || a1->Parent());
    EXPECT_FALSE(nodes.Item("B")->PrevSibling());

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

TEST(NodesWalk, NextPreviousPathsAndVisibility) {
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
    EXPECT_EQ(nodes.SetFirstNode(emptyText()), nodes.Root());
    EXPECT_EQ(nodes.GetNextNode(false)->Text(), "A1");
    EXPECT_EQ(nodes.SetFirstNode("nothing"), nodes.Root());
    EXPECT_EQ(nodes.SetFirstNode("A1")->Text(), "A1");
    EXPECT_EQ(walk(false), "A1a B");

    nodes.setExpanded(nodes.Item("A1"), true);
    EXPECT_EQ(walk(true), "A B");
    nodes.setExpanded(nodes.Root(), true);
    EXPECT_EQ(walk(true), "A A1 A1a B");
    nodes.setExpanded(nodes.Root(), false);
    EXPECT_FALSE(nodes.Item("A1a")->Visible());
    EXPECT_FALSE(nodes.Expanded(nullptr));
    EXPECT_FALSE(nodes.SetVisibility(nodes.Root()));
    EXPECT_FALSE(nodes.SetVisibility(nullptr));

    EXPECT_FALSE(nodes.GetPrevNode(nodes.Item(1)));
    EXPECT_FALSE(nodes.GetPrevNode(nullptr));
    EXPECT_EQ(nodes.GetPrevNode(nodes.Item(4), false), nodes.Item(3));
    EXPECT_EQ(nodes.GetPrevNode(nodes.Item(4)), nodes.Item(1));
    nodes.Item(2)->setDisplayed(true);
    EXPECT_EQ(nodes.GetPrevNode(nodes.Item(4)), nodes.Item(2));

    EXPECT_EQ(nodes.GetLastSibling(nodes.Root()), nodes.Item("B"));
    EXPECT_FALSE(nodes.GetLastSibling(nodes.Item("B")));
    EXPECT_EQ(nodes.FindPath(nodes.Item("A1a")), "A\\A1\\A1a");
    EXPECT_EQ(nodes.FindPath(nodes.Root()), "A");
    EXPECT_EQ(nodes.FindPath(nullptr), "");
}

TEST(NodesSelect, VisibleRowsOnly) {
    lsNodes nodes;
    build(nodes, {"A", "A/A1", "B", "C"});
    for (const lsNodePtr &n : nodes) {
        n->Cells()->Add("1", 1);
        n->Cells()->Add("2", 2);
    }
    nodes.setExpanded(nodes.Root(), true);
    EXPECT_EQ(nodes.Selected(2, 2), 0);
    EXPECT_EQ(nodes.SelectedRow(), nodes.Item("A1"));
    EXPECT_EQ(nodes.SelectedCell(), nodes.Item("A1")->Cells()->at(2));
    EXPECT_EQ(nodes.Selected(3, 1, true), 1);
    EXPECT_TRUE(nodes.Item("A1")->Selected() && nodes.Item("A1")->Cells()->at(2)->Selected());
    EXPECT_EQ(nodes.Selected(1, 1), 2);
    EXPECT_FALSE(nodes.Item("A1")->Selected() || nodes.Item("B")->Cells()->at(1)->Selected());

    nodes.Selected(2, 1, true);
    nodes.setExpanded(nodes.Root(), false);
    EXPECT_EQ(nodes.Selected(2, 1), 1);
    EXPECT_EQ(nodes.SelectedRow(), nodes.Item("A1"));
    EXPECT_TRUE(nodes.Item("A1")->Selected());
    EXPECT_FALSE(nodes.Root()->Selected());
    nodes.ClearSelection();
    EXPECT_FALSE(nodes.SelectedRow() || nodes.SelectedCell());
    EXPECT_TRUE(nodes.Item("A1")->Selected());
}

} // namespace
