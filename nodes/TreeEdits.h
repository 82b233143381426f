#pragma once
// Counts every change made to rows and cells, in any collection of the program, so that a view
// can tell at once whether anything may have changed since it last drew: painting is skipped only
// where nothing it reads can have changed. Single-threaded, like the rest of the component.

#include <QtGlobal>

class TreeEdits {
public:
    // Changes so far.
    static quint64 count() { return s_count; }
    // Records one change; every mutator of rows and cells calls it.
    static void note() { ++s_count; }

private:
    static inline quint64 s_count = 0;
};
