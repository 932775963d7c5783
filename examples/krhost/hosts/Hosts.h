#pragma once

namespace krhost::Hosts {

/// The host classes that scripts can make objects of, each by a constructor of this name.
inline constexpr const char* classNames[] = {"Box", "Settings", "Document",
                                             "XML", "File",     "Folder"};

/// Registers one factory for each of them, after the library has started.
void registerFactories();

} // namespace krhost::Hosts
