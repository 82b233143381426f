#pragma once
// A row made by its collection: the node and its cell collection in one heap block, made with
// std::make_shared so that the control block joins them too. Cell pointers handed out share the
// block's count (the cell collection's shared_from_this sees the block's owner), so a cell a host
// holds outlives its row.

#include "lsNode.h"

struct RowAllocation final : lsNode, lsCells {
    RowAllocation() {
        m_ownsCells = true;
        m_cellsEmbedded = true;
    }
};
