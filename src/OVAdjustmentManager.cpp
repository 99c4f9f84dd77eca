#include "OVAdjustmentManager.h"

#include "private/OVAdjustmentManager_p.h"

OV_DEFINE_ITEM_REGISTRY_FACE(OVAdjustmentManager, OVAdjustment, GetAdjustment)
