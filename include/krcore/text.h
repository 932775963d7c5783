#pragma once

/// @file
/// Text: strings, Unicode tables, plain functions over 16-bit text, encoders, localization.

#include <krcore/text/Encoder.h>
#include <krcore/text/Localizer.h>
#include <krcore/text/String.h>
#include <krcore/text/StringConversions.h>
#include <krcore/text/Strings16.h>
#include <krcore/text/UnicodeUtils.h>
