#pragma once
// The demo's host for the control: run mode, the ambient font and the registered image lists of
// the default host, but DoEvents does nothing. The control asks the host to let pending events
// run from inside its resize handling; Qt resizes a widget while it shows the widget's parent,
// and running posted events there can delete objects (style animations) that the parent's
// show is still walking over. The application's own event loop runs them soon after anyway.

#include "HostContainer.h"

class DemoHost : public HostContainer {
public:
    void DoEvents() override;
};
