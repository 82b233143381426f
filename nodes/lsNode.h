#pragma once
// One row of the body or of the header area: its links into the tree, its flags and its cells.
// Links that point down or right (`Child`, `LastChild`, `NextSibling`) own their target; links
// that point up or left (`Parent`, `PrevSibling`) are weak, so the tree never forms an ownership
// cycle and a host may keep a node after it left its collection.

#include "TreeEdits.h"
#include "lsCells.h"

#include <QString>
#include <QVariant>
#include <memory>

class lsNode;
using lsNodePtr = std::shared_ptr<lsNode>;
struct RowBlock;

class lsNode {
public:
    // Makes an expanded, visible node with no key, index 0 and an empty cell collection.
    lsNode() = default;
    ~lsNode();
    lsNode(const lsNode &) = delete;
    lsNode &operator=(const lsNode &) = delete;

    // The row's cells; never null: a node whose cells were set to null gets a fresh collection.
    const lsCellsPtr &Cells();
    // Replaces the row's cells (null is allowed; the next `Cells()` makes a new collection).
    void setCells(lsCellsPtr cells) {
        TreeEdits::note();
        m_Cells = std::move(cells);
    }

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
        m_Selected = v;
    }
    // Unique key within its collection (no value by default).
    const QVariant &Key() const { return m_Key; }
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

    // Writes of the collection itself, which keeps visibility in step on its own.
    void putVisible(bool v);
    void putExpanded(bool v) { m_Expanded = v; }

    // How often `Displayed` was put True through setDisplayed, in any collection.
    static inline quint64 s_displayedPuts = 0;

    // Rarely set values, kept out of line until one is.
    struct Rare {
        QString fullPath;
        // The key the collection stored the row under, once a host changed `Key` after that.
        QString storedKey;
    };
    Rare &rare();
    // The key text the collection stored the row under.
    const QString &storedKey() const;
    // Keeps the current key's text as the stored key, whatever `Key` becomes later.
    void pinKey();

    // The fields that adding a row reads on its relative and on the relative's last child come
    // first, so they share the first cache lines: loads that add under scattered parents wait
    // for memory once per row rather than once per field.
    // The block of the collection's row sequence that holds the row; null outside one.
    RowBlock *m_block = nullptr;
    qint32 m_IdentLevel = 0;
    // Where in its block the row was last found.
    mutable quint8 m_offsetHint = 0;
    bool m_Expanded : 1 = true;
    bool m_Selected : 1 = false;
    bool m_Visible : 1 = true;
    bool m_Flag : 1 = false;
    bool m_Displayed : 1 = false;
    bool m_Marked : 1 = false;
    // A host put `Index`: it reads back until the collection next renumbers.
    bool m_indexPut : 1 = false;
    // `Visible` here or below may disagree with the parent's (see lsNodes::SetVisibility).
    bool m_unsettled : 1 = false;
    // The collection's keys name the row.
    bool m_keyed : 1 = false;
    // Its stored key is the one kept in Rare, not `Key`.
    bool m_keyPinned : 1 = false;
    std::weak_ptr<lsNode> m_Parent;
    lsNodePtr m_LastChild;
    lsNodePtr m_NextSibling;
    QVariant m_Key;
    lsNodePtr m_Child;
    std::weak_ptr<lsNode> m_PrevSibling;
    QString m_Text;
    // Made on first use: rows that never show their cells do not pay for them.
    lsCellsPtr m_Cells;
    std::unique_ptr<Rare> m_rare;
    qint32 m_Index = 0;
    // The serial of the row's latest deferred visibility recomputation; 0 for none.
    quint32 m_pendingSerial = 0;
};
