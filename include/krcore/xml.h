#pragma once

/// @file
/// XML trees: build, navigate, change, parse and print.

#include <krcore/xml/XML.h>
