#pragma once
// The number of the component error a call raises, or 0 when it returns normally.
#include "TreeListError.h"

template <typename Call> int errorOf(Call &&call) {
    try {
        call();
    } catch (const TreeListError &e) {
        return e.number();
    }
    return 0;
}
