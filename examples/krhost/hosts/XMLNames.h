#pragma once

#include <krcore/text/String.h>

namespace krhost {

/// The property IDs of children and attributes: indexes and names have ranges of their own, so that
/// an ID means the same in all nodes.
namespace XMLNames {

/// The ID of a name or of the index that it spells.
int idOf(const KrCore::String& name);
int idOfIndex(int index);
/// The index behind an ID, or -1.
int indexOf(int id);
/// False for IDs that are not from here.
bool nameOf(int id, KrCore::String& name);
/// Whether the name belongs to what all script objects have, like "constructor".
bool isReserved(const KrCore::String& name);

} // namespace XMLNames

} // namespace krhost
