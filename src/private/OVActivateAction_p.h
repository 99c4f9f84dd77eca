#pragma once

#include "OVActivateAction.h"

class OVActivateActionPrivate
{
public:
    explicit OVActivateActionPrivate(OVActivateAction* owner)
        : owner(owner)
    {}

    OVActivateAction* const owner;
    bool checked = false;           // the explicit state
    bool implicitlyChecked = false; // the implicit state
    bool allowChange = true;
};
