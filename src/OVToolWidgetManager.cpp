#include "OVToolWidgetManager.h"

#include "private/OVSingleton_p.h"
#include "private/OVToolContent_p.h"

OV_DEFINE_SINGLETON(OVToolWidgetManager)

// A tool-widget content is hidden when switched away from, and the focus is left as it is.
OV_DEFINE_TOOL_CONTENT_MANAGER(OVToolWidgetManager, false)
