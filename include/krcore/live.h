#pragma once

/// @file
/// Scriptable objects, their properties and components.

#include <krcore/live/InfoType.h>
#include <krcore/live/LiveBase.h>
#include <krcore/live/LiveComponent.h>
#include <krcore/live/LiveObject.h>
#include <krcore/live/LiveProperty.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/live/PropertyID.h>
