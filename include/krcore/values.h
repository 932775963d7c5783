#pragma once

/// @file
/// Values: variants, errors, points and rectangles.

#include <krcore/values/Error.h>
#include <krcore/values/ErrorInfo.h>
#include <krcore/values/JSObject.h>
#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>
#include <krcore/values/UnitValue.h>
#include <krcore/values/Variant.h>
#include <krcore/values/VariantType.h>
