#pragma once
// Counts every change made to rows and cells, in any collection of the program, so that a view
// can tell at once whether anything may have changed since it last drew: painting is skipped only
// where nothing it reads can have changed. Single-threaded, like the rest of the component.

#include "vkTreeListExport.h"
#include <QtGlobal>

// Exported, and defined in the library rather than inline, so that the count is one across the
// library and a host whose own code runs the inline setters of rows and cells.
class VKTL_EXPORT TreeEdits {
public:
    // Changes so far.
    static quint64 count() { return s_count; }
    // Records one change; every mutator of rows and cells calls it.
    static void note() { ++s_count; }

private:
    static quint64 s_count;
};
