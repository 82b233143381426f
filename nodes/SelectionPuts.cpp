#include "SelectionPuts.h"

quint64 SelectionPuts::s_count = 0;
