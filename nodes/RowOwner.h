#pragma once
// What a row asks of the collection that holds it. A row knows its collection only through this
// interface, so the row does not depend on how the collection keeps its rows, and a row that is
// in no collection asks nothing.

#include <QtGlobal>

class lsNode;

class RowOwner {
public:
    // The part of the collection a held row points to (a block of rows), which names the owner.
    struct Holder {
        RowOwner *owner = nullptr;
    };

    // Carries out visibility work put off against the rows as they were; called before a held
    // row's `Visible` or `Expanded` is read or changed.
    virtual void resolvePending() = 0;
    // A held row's `Visible` became `visible`.
    virtual void visibleChanged(const lsNode &row, bool visible) = 0;
    // A held row's own `Visible` or `Expanded` changed, so rows below it may disagree with it
    // until a recomputation reaches them.
    virtual void unsettle(lsNode &row) = 0;
    // A held row's `Index`: the number a host put on it, else its rank in tree order.
    virtual qint32 indexOf(const lsNode &row) const = 0;
    // A host put `index` on a held row; it reads back until the collection renumbers.
    virtual void putIndex(const lsNode &row, qint32 index) = 0;

protected:
    // Owners are not destroyed through this interface.
    ~RowOwner() = default;
};
