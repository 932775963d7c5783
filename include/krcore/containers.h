#pragma once

#include <krcore/containers/Array.h>
#include <krcore/containers/HashTable.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/containers/SparseArray.h>
#include <krcore/containers/THashTable.h>
#include <krcore/containers/TSimpleArray.h>
