#pragma once

/// @file
/// Regular expressions.

#include <krcore/regexp/Capture.h>
#include <krcore/regexp/RegExp.h>
