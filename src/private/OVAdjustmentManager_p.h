#pragma once

#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"
#include "private/OVItemRegistry_p.h"

class OVAdjustmentManagerPrivate : public OVItemRegistry<OVAdjustmentManager, OVAdjustment>
{
public:
    explicit OVAdjustmentManagerPrivate(OVAdjustmentManager* owner)
        : OVItemRegistry(owner, {117, "src\\OVAdjustmentManager.cpp", "Tool is not registered."})
    {}
};
