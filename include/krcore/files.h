#pragma once

/// @file
/// File locations, files, folders.

#include <krcore/files/File.h>
#include <krcore/files/FileAttribute.h>
#include <krcore/files/FileFilter.h>
#include <krcore/files/FileSpec.h>
#include <krcore/files/FileUtils.h>
#include <krcore/files/FileWrapper.h>
#include <krcore/files/Folder.h>
