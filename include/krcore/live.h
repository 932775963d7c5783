#pragma once

/// @file
/// Scriptable objects, their properties, elements and components, and what they tell of themselves.

#include <krcore/live/ClassInfo.h>
#include <krcore/live/InfoState.h>
#include <krcore/live/InfoType.h>
#include <krcore/live/LiveArray.h>
#include <krcore/live/LiveBase.h>
#include <krcore/live/LiveCollection.h>
#include <krcore/live/LiveComponent.h>
#include <krcore/live/LiveObject.h>
#include <krcore/live/LiveObjectClassInfo.h>
#include <krcore/live/LiveProperty.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/live/ParamInfo.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/live/PropertyID.h>
#include <krcore/live/PropertyManagerClassInfo.h>
#include <krcore/live/ServiceInfo.h>
#include <krcore/live/TypeInfo.h>
