// Thousands of seeded random operations, each followed by a check of the collection's invariants.
#include "lsNodes.h"

#include <gtest/gtest.h>
#include <random>

namespace {

// The rows reachable from `node` through Child and NextSibling links, in pre-order.
void preOrder(const lsNodePtr &node, std::vector<lsNodePtr> &out) {
    for (lsNodePtr n = node; n; n = n->NextSibling()) {
        out.push_back(n);
        preOrder(n->Child(), out);
    }
}

bool allExpired(const std::vector<std::weak_ptr<lsNode>> &rows) {
    return std::all_of(rows.begin(), rows.end(), [](auto &w) { return w.expired(); });
}

// Index, positions, Root, Tail, links both ways, depth and the Visible rule over the whole tree.
void checkInvariants(lsNodes &nodes) {
    std::vector<lsNodePtr> rows;
    preOrder(nodes.Root(), rows);
    ASSERT_EQ(static_cast<qint32>(rows.size()), nodes.Count());
    ASSERT_EQ(nodes.Root(), rows.empty() ? nullptr : rows.front());
    ASSERT_EQ(nodes.Tail(), rows.empty() ? nullptr : rows.back());
    ASSERT_TRUE(std::equal(rows.begin(), rows.end(), nodes.begin(), nodes.end()));
    for (qint32 i = 1; i <= nodes.Count(); ++i) {
        const lsNodePtr &n = rows[static_cast<size_t>(i - 1)];
        const lsNodePtr parent = n->Parent(), next = n->NextSibling();
        ASSERT_EQ(n->Index(), i);
        ASSERT_EQ(nodes.at(i), n);
        ASSERT_EQ(n->IdentLevel(), parent ? parent->IdentLevel() + 1 : 0);
        ASSERT_EQ(n->Visible(), !parent || (parent->Visible() && parent->Expanded()));
        ASSERT_TRUE(next ? next->PrevSibling() == n && next->Parent() == parent
                         : !parent || parent->LastChild() == n);
        ASSERT_TRUE(n->PrevSibling() || (parent ? parent->Child() == n : n == nodes.Root()));
        ASSERT_EQ(n->LastChild() != nullptr, n->Child() != nullptr);
        ASSERT_TRUE(!n->Child() || n->Child()->Parent() == n);
    }
}

TEST(NodesRandom, MixedOperationsKeepTheInvariants) {
    std::mt19937 rng(20261121);
    auto pick = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
    lsNodes nodes;
    std::vector<std::weak_ptr<lsNode>> added;
    int serial = 0;
    auto anyRow = [&]() -> QVariant {
        const lsNodePtr n = nodes.at(1 + pick(nodes.Count() + 2));
        if (!n || pick(4) == 0)
            return pick(2) ? QVariant() : QVariant("unknown");
        return n->Key().toString().isEmpty() || pick(2) ? QVariant(n->Index()) : n->Key();
    };

    for (int step = 0; step < 6000; ++step) {
        SCOPED_TRACE(step);
        const int op = nodes.Count() > 150 ? pick(100) % 60 + 40 : pick(100);
        if (op < 40) {
            qint32 relationship = pick(5);
            const qint32 asked = relationship;
            const QVariant key = pick(2) ? QVariant(QString("k%1").arg(++serial)) : emptyText();
            const lsNodePtr n = nodes.Add(anyRow(), relationship, key, QString::number(step));
            for (int c = pick(3); c > 0; --c)
                n->Cells()->Add(QString(), c);
            added.push_back(n);
            EXPECT_EQ(relationship, nodes.Count() > 1 && asked < lsNext ? lsNext : asked);
            EXPECT_EQ(n->Visible(), !n->Parent() || n->Parent()->Expanded());
        } else if (op < 55) {
            const QVariant which = anyRow();
            const lsNodePtr target = nodes.Item(which);
            std::vector<lsNodePtr> subtree{target};
            if (target)
                preOrder(target->Child(), subtree);
            const std::vector<std::weak_ptr<lsNode>> below(subtree.begin() + 1, subtree.end());
            subtree.clear();
            const qint32 before = nodes.Count();
            EXPECT_EQ(nodes.Remove(which), target != nullptr);
            EXPECT_EQ(nodes.Count(), before - (target ? static_cast<qint32>(below.size()) + 1 : 0));
            EXPECT_TRUE(!target ||
                        (!target->Parent() && !target->NextSibling() && allExpired(below)));
            const lsNodePtr selected = nodes.SelectedRow();
            EXPECT_TRUE(!selected || nodes.Item(selected->Index()) == selected);
        } else if (op < 80) {
            // The Visible rule after opening or closing is part of checkInvariants below.
            const lsNodePtr n = nodes.Item(anyRow());
            nodes.setExpanded(n, pick(2));
        } else if (op < 92) {
            const qint32 row = 1 + pick(nodes.Count() + 1), col = pick(4);
            const bool multi = pick(2);
            const auto selectedBefore = std::count_if(
                nodes.begin(), nodes.end(), [](auto &n) { return n->Visible() && n->Selected(); });
            const lsNodePtr target = nodes.at(row);
            EXPECT_EQ(nodes.Selected(row, col, multi), selectedBefore);
            EXPECT_TRUE(!target || !target->Visible() || nodes.SelectedRow() == target);
        } else if (op < 99) {
            QStringList walked, expected;
            const lsNodePtr start = nodes.SetFirstNode(anyRow());
            for (lsNodePtr n = nodes.GetNextNode(); n; n = nodes.GetNextNode())
                walked << n->Text();
            for (qint32 i = start ? start->Index() + 1 : 1; i <= nodes.Count(); ++i)
                if (nodes.at(i)->Visible())
                    expected << nodes.at(i)->Text();
            EXPECT_EQ(walked, expected);
        } else {
            nodes.Clear();
            EXPECT_TRUE(nodes.Count() == 0 && allExpired(added));
            added.clear();
        }
        EXPECT_FALSE(nodes.SetVisibility(nodes.Root()));
        checkInvariants(nodes);
        if (HasFatalFailure())
            return;
    }
}

// Clearing in one pass ends where removing the first top-level row until none is left ends:
// every row unlinked, flagged and numbered within its own top-level subtree.
TEST(NodesRandom, ClearEndsLikeRemovingTheFirstRowUntilNoneIsLeft) {
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
