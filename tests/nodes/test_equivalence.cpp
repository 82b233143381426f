// Seeded random operation scripts run on the collection and on the plain reference side by side;
// after every operation the whole observable state of both must be the same.
#include "ErrorOf.h"
#include "ReferenceNodes.h"
#include "lsNodes.h"

#include <gtest/gtest.h>
#include <random>

namespace {

class Script {
public:
    Script(unsigned seed, qint32 rows) : m_rng(seed), m_rows(rows), m_quiet(seed % 2 == 0) {}

    void run(int steps) {
        for (int step = 0; step < steps && !::testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(::testing::Message() << "step " << step);
            int op = m_ours.Count() > m_rows ? 45 + pick(55) : pick(100);
            // Host puts leave rows that may disagree with their parents, which keeps the
            // collection from putting work off; quiet scripts make them only after a burst.
            if (m_quiet && op >= 64 && op < 72)
                op -= 16;
            // Recomputing from the first row settles every row that disagreed: then openings
            // and closings are put off until a read.
            if (m_quiet && pick(4) == 0) {
                m_ours.SetVisibility(m_ours.Root());
                m_ref.setVisibility(m_ref.root);
            }
            const int ourError = errorOf([&] { apply(op); });
            EXPECT_EQ(ourError, m_refError) << "op " << op;
            m_ours.check();
            compare();
        }
    }

private:
    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_rng); }

    QVariant anyKey() {
        static const char *const cases[] = {"k%1", "K%1"};
        if (pick(10) == 0)
            return pick(2) ? QVariant(pick(30)) : QVariant(QVariantList{});
        return pick(3) ? QVariant(QString(cases[pick(2)]).arg(pick(60))) : emptyText();
    }
    QVariant anyRelative() {
        switch (pick(8)) {
        case 0:
            // Neither a position nor a key: a list names no row.
            return pick(2) ? QVariant() : QVariant(QVariantList{});
        case 1:
            return emptyText();
        case 2:
            return QString("k%1").arg(pick(60));
        case 3:
            return 0.5 + pick(m_ours.Count() + 2);
        default:
            return pick(m_ours.Count() + 3) - 1;
        }
    }
    // A row of either side, the same one on both; removed rows stay in play.
    std::pair<lsNodePtr, RefRow *> anyRow() {
        const int tracked = int(m_pairs.size()) - m_firstTracked;
        if (tracked <= 0 || pick(12) == 0)
            return {nullptr, nullptr};
        return m_pairs[size_t(m_firstTracked + pick(tracked))];
    }

    void apply(int op) {
        m_refError = 0;
        const auto both = [&](auto &&ours, auto &&ref) {
            m_refError = errorOf(ref);
            ours();
        };
        auto [row, ref] = anyRow();
        if (op < 40) {
            // Mostly the five known relationships, now and then one that names none.
            qint32 relationship = pick(8) ? pick(5) : pick(2) * 8 - 1;
            qint32 refRelationship = relationship;
            const QVariant relative = anyRelative(), key = anyKey();
            RefRow *made = nullptr;
            m_refError = errorOf([&] { m_ref.add(relative, refRelationship, key, made); });
            lsNodePtr node;
            const int error = errorOf([&] { node = m_ours.Add(relative, relationship, key); });
            EXPECT_EQ(relationship, refRelationship);
            if (!made) {
                if (error)
                    throw TreeListError(TreeListError::Number(error));
                return;
            }
            if (!node) // a duplicate key: the row is linked where the reference put it
                node = made->prev     ? ours(made->prev)->NextSibling()
                       : made->parent ? ours(made->parent)->Child()
                                      : m_ours.Root();
            const int cells = pick(3);
            made->cellSelected.resize(size_t(cells));
            for (int c = 1; c <= cells; ++c)
                node->Cells()->Add(QString(), qint16(c));
            m_ids.insert(node.get(), made->id);
            m_pairs.emplace_back(node, made);
            if (error)
                throw TreeListError(TreeListError::Number(error));
        } else if (op < 48) {
            const QVariant which = pick(2) ? anyRelative() : anyKey();
            bool refResult = false;
            m_refError = errorOf([&] { refResult = m_ref.remove(which); });
            EXPECT_EQ(m_ours.Remove(which), refResult);
        } else if (op < 62) {
            const bool value = pick(2);
            both([&] { m_ours.setExpanded(row, value); }, [&] { m_ref.setExpanded(ref, value); });
            if (pick(2) == 0) {
                // Several openings and closings with nothing read in between, then any other
                // operation: work put off until a read must come out the same.
                for (int n = pick(5); n > 0; --n) {
                    const auto [other, otherRef] = anyRow();
                    const bool open = pick(2);
                    m_ours.setExpanded(other, open);
                    m_ref.setExpanded(otherRef, open);
                }
                // Half the time a host puts Visible or Expanded on a row below the first one
                // opened or closed, one with rows of its own where there is one.
                lsNodePtr below = row ? row->Child() : nullptr;
                RefRow *belowRef = ref ? ref->child : nullptr;
                while (below && !below->Child() && below->NextSibling())
                    below = below->NextSibling(), belowRef = belowRef->next;
                if (pick(2) && below)
                    hostPut(below, belowRef, 3);
                else
                    apply(pick(100));
            }
        } else if (op < 64) {
            both([&] { m_ours.SetVisibility(row); }, [&] { m_ref.setVisibility(ref); });
        } else if (op < 72 && row) {
            hostPut(row, ref);
        } else if (op < 82) {
            const qint32 rowId = pick(m_ours.Count() + 2), colId = pick(4);
            const bool multi = pick(2);
            qint32 refResult = 0;
            m_refError = errorOf([&] { refResult = m_ref.selected(rowId, colId, multi); });
            EXPECT_EQ(m_ours.Selected(rowId, colId, multi), refResult);
        } else if (op < 92) {
            const QVariant start = anyRelative();
            const bool onlyVisible = pick(3);
            if (pick(2)) {
                EXPECT_EQ(id(m_ours.SetFirstNode(start)), idOf(m_ref.setFirstNode(start)));
            }
            for (int n = pick(30); n > 0; --n)
                EXPECT_EQ(id(m_ours.GetNextNode(onlyVisible)),
                          idOf(m_ref.getNextNode(onlyVisible)));
            EXPECT_EQ(id(m_ours.GetPrevNode(row, onlyVisible)),
                      idOf(m_ref.getPrevNode(ref, onlyVisible)));
        } else if (op < 95) {
            EXPECT_EQ(m_ours.ReIndex(), m_ref.reIndex());
        } else if (op < 97) {
            m_ours.ClearFlags();
            m_ref.clearFlags();
        } else if (op < 98) {
            m_ours.ClearSelection();
            m_ref.selectedRow = m_ref.selectedCellRow = nullptr;
        } else if (op < 100 && pick(4) == 0) {
            both([&] { m_ours.Clear(); }, [&] { m_ref.clear(); });
            m_retire = true;
        }
    }

    // A host writes a row's flags directly.
    void hostPut(const lsNodePtr &row, RefRow *ref, int kinds = 9) {
        const bool value = pick(2);
        switch (pick(kinds)) {
        case 0:
        case 1:
            row->setVisible(value), ref->visible = value;
            break;
        case 2:
            row->setExpanded(value), ref->expanded = value;
            break;
        case 3:
            row->setDisplayed(value), ref->displayed = value;
            break;
        case 4: {
            const QVariant key = anyKey();
            row->setKey(key), ref->key = key;
            break;
        }
        case 5:
            // Selection flags put by hand: the next selection must find them too.
            row->setSelected(value), ref->selected = value;
            break;
        case 7:
            // A removal's scratch flag put by hand: ClearFlags must find it.
            row->setFlag(value), ref->flag = value;
            break;
        case 6:
            if (const qint32 cells = qint32(ref->cellSelected.size())) {
                const qint32 c = 1 + pick(cells);
                row->Cells()->at(c)->setSelected(value), ref->cellSelected[size_t(c - 1)] = value;
            }
            break;
        default:
            row->setIndex(pick(50)), ref->index = row->Index();
        }
    }

    lsNode *ours(const RefRow *ref) const { return m_pairs[size_t(ref->id)].first.get(); }
    int id(const lsNodePtr &node) const { return node ? m_ids.value(node.get(), -2) : -1; }
    static int idOf(const RefRow *ref) { return ref ? ref->id : -1; }

    void compare() {
        ASSERT_EQ(m_ours.Count(), m_ref.count);
        ASSERT_EQ(id(m_ours.Root()), idOf(m_ref.root));
        ASSERT_EQ(id(m_ours.Tail()), idOf(m_ref.tail));
        ASSERT_EQ(id(m_ours.SelectedRow()), idOf(m_ref.selectedRow));
        const lsCellPtr cell = m_ours.SelectedCell();
        ASSERT_EQ(cell.get(),
                  !m_ref.selectedCellRow
                      ? nullptr
                      : ours(m_ref.selectedCellRow)->Cells()->at(m_ref.selectedCellColumn).get());
        const qint32 positions = qint32(m_ref.positions.size());
        qint32 visible = 0;
        for (qint32 i = 0; i <= positions + 1; ++i) {
            const RefRow *at = i >= 1 && i <= positions ? m_ref.positions[size_t(i - 1)] : nullptr;
            ASSERT_EQ(id(m_ours.at(i)), idOf(at)) << "position " << i;
            visible += at && at->visible;
            ASSERT_EQ(m_ours.VisibleRowsUpTo(i), visible) << "position " << i;
            if (at && at->visible) {
                ASSERT_EQ(id(m_ours.VisibleRowAt(visible)), at->id) << "visible row " << visible;
            }
        }
        ASSERT_FALSE(m_ours.VisibleRowAt(visible + 1) || m_ours.VisibleRowAt(0));
        ASSERT_EQ(std::distance(m_ours.begin(), m_ours.end()), positions);
        for (size_t i = size_t(m_firstTracked); i < m_pairs.size(); ++i) {
            const auto &[row, ref] = m_pairs[i];
            ASSERT_EQ(std::tuple(row->Index(), row->IdentLevel(), row->Visible(), row->Expanded(),
                                 row->Selected(), row->Flag(), row->Displayed()),
                      std::tuple(ref->index, ref->identLevel, ref->visible, ref->expanded,
                                 ref->selected, ref->flag, ref->displayed))
                << "row " << ref->id;
            ASSERT_EQ(std::tuple(id(row->Parent()), id(row->Child()), id(row->LastChild()),
                                 id(row->NextSibling()), id(row->PrevSibling())),
                      std::tuple(idOf(ref->parent), idOf(ref->child), idOf(ref->lastChild),
                                 idOf(ref->next), idOf(ref->prev)))
                << "row " << ref->id;
            ASSERT_EQ(id(m_ours.GetLastSibling(row)), idOf(ReferenceNodes::lastSibling(ref)))
                << "row " << ref->id;
            if (!ref->storedKey.isEmpty()) {
                ASSERT_EQ(id(m_ours.Item(ref->storedKey)), idOf(m_ref.item(ref->storedKey)));
            }
            if (!isEmptyText(ref->key) && indexKeyKind(ref->key) == IndexKeyKind::Key) {
                ASSERT_EQ(id(m_ours.Item(variantText(ref->key))),
                          idOf(m_ref.item(variantText(ref->key))));
            }
            for (size_t c = 0; c < ref->cellSelected.size(); ++c)
                ASSERT_EQ(row->Cells()->at(qint32(c + 1))->Selected(), ref->cellSelected[c]);
        }
        ASSERT_FALSE(m_ours.GetLastSibling(nullptr));
        // Rows cleared away were seen once in their end state; later steps leave them alone.
        if (m_retire)
            m_firstTracked = int(m_pairs.size()), m_retire = false;
    }

    std::mt19937 m_rng;
    const qint32 m_rows; // trees grow to about this many rows
    const bool m_quiet;
    int m_firstTracked = 0;
    bool m_retire = false;
    lsNodes m_ours;
    ReferenceNodes m_ref;
    int m_refError = 0;
    std::vector<std::pair<lsNodePtr, RefRow *>> m_pairs;
    QHash<const lsNode *, int> m_ids;
};

TEST(NodesEquivalence, RandomScriptsMatchThePlainImplementation) {
    // Small trees for many steps, and one of several blocks.
    for (unsigned seed = 1; seed <= 8; ++seed) {
        SCOPED_TRACE(::testing::Message() << "seed " << seed);
        Script(seed, seed == 1 ? 300 : 100).run(1500);
    }
}

} // namespace
