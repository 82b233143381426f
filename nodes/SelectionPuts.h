#pragma once
// Counts the times a row's or a cell's `Selected` was put True from outside its collection's own
// selection, in any collection of the program. A collection keeps the rows its selections flagged;
// while this count stands still, those are all the rows and cells that carry the flag, and a new
// selection need visit no others.

#include "vkTreeListExport.h"
#include <QtGlobal>

// Exported, and defined in the library rather than inline, so that the count is one across the
// library and a host whose own code runs the inline setters of rows and cells.
class VKTL_EXPORT SelectionPuts {
public:
    // Puts so far.
    static quint64 count() { return s_count; }
    // Records one put of True.
    static void note() { ++s_count; }

private:
    static quint64 s_count;
};
