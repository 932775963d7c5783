#pragma once

namespace KrCore {

class FileSpec;
class String;

/// Whether this can be the name of a file: one name, no path.
bool isEntryName(const String& name);

/// Gives a file or folder another name where it is and makes `spec` follow. Returns an error
/// code.
int renameTo(FileSpec& spec, const String& name);

/// Removes a file, an empty folder, or a link. Returns an error code.
int removeAt(const FileSpec& spec);

} // namespace KrCore
