#include "TreeEdits.h"

quint64 TreeEdits::s_count = 0;
