#pragma once
// One row of the body or of the header area: its links into the tree, its flags and its cells.
// Links that point down or right (`Child`, `LastChild`, `NextSibling`) own their target; links
// that point up or left (`Parent`, `PrevSibling`) are weak, so the tree never forms an ownership
// cycle and a host may keep a node after it left its collection.
//
// A row made by its collection shares one allocation with its cells (see RowAllocation.h): a cell
// or cell collection a host holds keeps that allocation alive, as a node pointer does.

#include "RowOwner.h"
#include "SelectionPuts.h"
#include "TreeEdits.h"
#include "lsCells.h"
#include "vkTreeListExport.h"

#include <QString>
#include <QVariant>
#include <memory>

class lsNode;
using lsNodePtr = std::shared_ptr<lsNode>;

class VKTL_EXPORT lsNode {
public:
    // Makes an expanded, visible node with no key, index 0 and an empty cell collection.
    lsNode() = default;
    ~lsNode();
    lsNode(const lsNode &) = delete;
    lsNode &operator=(const lsNode &) = delete;

    // The row's cells; never null: a node whose cells were set to null gets a fresh collection.
    lsCellsPtr Cells();
    // The row's cells without sharing ownership: valid while the row holds them (for the
    // component's own short-lived reads and writes).
    lsCells &borrowCells();
    // The row's cells if it has made any, else null; looking does not make them.
    const lsCells *cellsIfMade() const;
    // Replaces the row's cells (null is allowed; the next `Cells()` makes a new collection).
    void setCells(lsCellsPtr cells);

    // Previous node under the same parent.
    lsNodePtr PrevSibling() const { return m_PrevSibling.lock(); }
    void setPrevSibling(const lsNodePtr &n) {
        TreeEdits::note();
        m_PrevSibling = n;
    }
    // Next node under the same parent.
    const lsNodePtr &NextSibling() const { return m_NextSibling; }
    void setNextSibling(lsNodePtr n) {
        TreeEdits::note();
        m_NextSibling = std::move(n);
    }
    // First child.
    const lsNodePtr &Child() const { return m_Child; }
    void setChild(lsNodePtr n) {
        TreeEdits::note();
        m_Child = std::move(n);
    }
    // Last child.
    const lsNodePtr &LastChild() const { return m_LastChild; }
    void setLastChild(lsNodePtr n) {
        TreeEdits::note();
        m_LastChild = std::move(n);
    }
    // Parent node; null for a top-level node.
    lsNodePtr Parent() const { return m_Parent.lock(); }
    void setParent(const lsNodePtr &n) {
        TreeEdits::note();
        m_Parent = n;
    }
    // True when the parent link is set (cheaper than Parent() where only presence matters).
    bool hasParent() const { return !m_Parent.expired(); }

    // The row may be shown: it is not hidden under a collapsed ancestor.
    bool Visible() const;
    void setVisible(bool v);
    // The row's own text.
    const QString &Text() const { return m_Text; }
    void setText(const QString &v) {
        TreeEdits::note();
        m_Text = v;
    }
    // The row is selected.
    bool Selected() const { return m_Selected; }
    void setSelected(bool v) {
        TreeEdits::note();
        if (v)
            SelectionPuts::note();
        m_Selected = v;
    }
    // Unique key within its collection (no value by default).
    QVariant Key() const;
    void setKey(const QVariant &v);
    // True exactly when `Child` refers to a node.
    bool HasChild() const { return m_Child != nullptr; }
    // Free text; nothing in the component fills it.
    const QString &FullPath() const;
    void setFullPath(const QString &v);
    // 1-based position in tree pre-order, assigned by the collection.
    qint32 Index() const;
    void setIndex(qint32 v);
    // Children are shown when the node is visible.
    bool Expanded() const { return m_Expanded; }
    void setExpanded(bool v);
    // Depth in the tree, 0 for top level.
    qint32 IdentLevel() const { return m_IdentLevel; }
    void setIdentLevel(qint32 v) {
        TreeEdits::note();
        m_IdentLevel = v;
    }
    // Scratch mark used by removal.
    bool Flag() const { return m_Flag; }
    void setFlag(bool v) {
        TreeEdits::note();
        if (v)
            ++s_flagPuts;
        m_Flag = v;
    }
    // The row lies in the part of the list that is on screen; set by painting.
    bool Displayed() const { return m_Displayed; }
    void setDisplayed(bool v) {
        // A row marked from outside painting may be anywhere: its collection's next clearing
        // visits every row instead of only those painting marked.
        TreeEdits::note();
        if (v)
            ++s_displayedPuts;
        m_Displayed = v;
    }

    // Sum of the cells' widths (32-bit; more than 32767 cells or a sum past 32 bits overflow).
    qint32 Width();

    // The row carries the user's mark.
    bool Marked() const { return m_Marked; }
    void setMarked(bool v) {
        TreeEdits::note();
        m_Marked = v;
    }

    // Drops all five links (used when a node leaves its collection).
    void clearLinks();

private:
    friend class RowSequence;
    friend class NodeOrder;
    friend class KeyIndex;
    friend class lsNodes;
    friend struct RowAllocation;

    // Writes of the collection itself, which keeps visibility in step on its own.
    void putVisible(bool v);
    void putExpanded(bool v) { m_Expanded = v; }

    // How often `Displayed` was put True through setDisplayed, in any collection.
    static quint64 s_displayedPuts; // one count for the library and hosts alike
    // How often `Flag` was put True through setFlag, in any collection.
    static quint64 s_flagPuts;

    // Rarely set values, kept in a table beside the nodes until one is set (see lsNode.cpp).
    struct Rare;
    Rare &rare();
    const Rare *rareIfAny() const;

    // The collection that holds the row, or null outside one.
    RowOwner *owner() const { return m_inSequence ? m_holder->owner : nullptr; }
    // Enters a collection at `holder` / leaves it keeping `index` as its number.
    void enterHolder(RowOwner::Holder *holder) {
        m_holder = holder;
        m_inSequence = true;
    }
    void leaveSequence(qint32 index) {
        m_Index = index;
        m_inSequence = false;
    }

    // The key text the collection stored the row under.
    const QString &storedKey() const;
    // Keeps the current key's text as the stored key, whatever `Key` becomes later.
    void pinKey();

    enum class KeyKind : quint8 { None, Text, Other };

    // A row costs one allocation with its cells, and a table of 32767 rows lives in the caches
    // only as long as the rows stay small: the fields are packed so that the node, its control
    // block and four inline cells fit a 384-byte heap block. The fields that adding a row reads
    // on its relative and on the relative's last child come first, so they share the first
    // cache lines: loads that add under scattered parents wait for memory once per row rather
    // than once per field.

    // In a collection the part of it that holds the row; outside one the row's number (`Index`).
    // A number a host puts on a held row is kept by the collection until it next renumbers.
    union {
        RowOwner::Holder *m_holder = nullptr;
        qint32 m_Index;
    };
    qint32 m_IdentLevel = 0;
    // Where in its block the row was last found.
    mutable quint8 m_offsetHint = 0;
    bool m_inSequence : 1 = false;
    bool m_Expanded : 1 = true;
    bool m_Selected : 1 = false;
    bool m_Visible : 1 = true;
    bool m_Flag : 1 = false;
    bool m_Displayed : 1 = false;
    bool m_Marked : 1 = false;
    // `Visible` here or below may disagree with the parent's (see RowVisibility).
    bool m_unsettled : 1 = false;
    // The collection's keys name the row.
    bool m_keyed : 1 = false;
    // Its stored key is the one kept in Rare, not `Key`.
    bool m_keyPinned : 1 = false;
    // The row's allocation carries a cell collection (see RowAllocation.h)...
    bool m_ownsCells : 1 = false;
    // ...and the row's cells are that one, not Rare's.
    bool m_cellsEmbedded : 1 = false;
    // The table beside the nodes holds a Rare for this node.
    bool m_hasRare : 1 = false;
    // A text key lives in m_keyText; any other key in Rare.
    KeyKind m_keyKind : 2 = KeyKind::None;
    std::weak_ptr<lsNode> m_Parent;
    lsNodePtr m_LastChild;
    lsNodePtr m_NextSibling;
    QString m_keyText;
    lsNodePtr m_Child;
    std::weak_ptr<lsNode> m_PrevSibling;
    QString m_Text;
};
