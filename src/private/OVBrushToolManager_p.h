#pragma once

#include "OVBrushPlugin.h"
#include "OVBrushToolManager.h"
#include "private/OVItemRegistry_p.h"

class OVBrushToolManagerPrivate : public OVItemRegistry<OVBrushToolManager, OVBrushPlugin>
{
public:
    explicit OVBrushToolManagerPrivate(OVBrushToolManager* owner)
        : OVItemRegistry(owner, {116, "src\\OVBrushToolManager.cpp", "Tool will not register."})
    {}

    OVBrushPlugin* mainBrush = nullptr;
};
