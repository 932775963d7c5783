#pragma once

/// @file
/// What the library shows. `KR_API` marks a public class or function; everything else stays inside.

#if defined(_WIN32)
#if defined(KRCORE_BUILDING)
#define KR_API __declspec(dllexport)
#else
#define KR_API __declspec(dllimport)
#endif
#else
#define KR_API __attribute__((visibility("default")))
#endif
