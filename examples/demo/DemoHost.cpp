#include "DemoHost.h"

void DemoHost::DoEvents() {}
