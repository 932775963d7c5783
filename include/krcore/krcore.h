#pragma once

/// @file
/// Everything KrCore offers.

#include <krcore/containers.h>
#include <krcore/files.h>
#include <krcore/foundation.h>
#include <krcore/live.h>
#include <krcore/messages.h>
#include <krcore/regexp.h>
#include <krcore/text.h>
#include <krcore/values.h>
#include <krcore/xml.h>
