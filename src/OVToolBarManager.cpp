#include "OVToolBarManager.h"

#include "private/OVSingleton_p.h"
#include "private/OVToolContent_p.h"

OV_DEFINE_SINGLETON(OVToolBarManager)

// A tool-bar content usually holds input fields; one that is switched away from gives up the
// keyboard focus, so that typing does not go on into a field that is no longer shown.
OV_DEFINE_TOOL_CONTENT_MANAGER(OVToolBarManager, true)
