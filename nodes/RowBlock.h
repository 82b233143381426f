#pragma once
// A run of consecutive rows of a RowSequence with the counts that let positions and visible rows
// be found without visiting every row. Its rows point to it as their holder, and it names the
// owner they ask.

#include "RowOwner.h"
#include "lsNode.h"

class RowSequence;

struct RowBlock : RowOwner::Holder {
    static constexpr qint32 kCapacity = 32;

    RowSequence *sequence = nullptr;
    qint32 index = 0;     // place in the sequence's list of blocks, once the sequence renumbered
    qint32 size = 0;      // rows held
    qint32 visible = 0;   // rows whose `Visible` is set
    qint32 unsettled = 0; // rows marked as possibly disagreeing with their parent's visibility
    lsNodePtr rows[kCapacity];
};
