#pragma once

#include "files/TextReader.h"
#include "files/TextWriter.h"
#include "platform/FileStream.h"

#include <krcore/files/FileSpec.h>
#include <krcore/text/String.h>

namespace KrCore {

/// What a `File` holds. Either the reader or the writer knows the position: the writer while it has
/// written last.
struct FileData : public Heap {
    explicit FileData(const FileSpec& location) : spec(location) {}

    enum class Access { ReadOnly, Anywhere, AtEnd };

    FileSpec spec;
    int lookupError = 0; ///< Of the last look whether the file is there; 0 when it is.
    Platform::FileStream stream;
    String encodingName;              ///< Canonical; empty until an encoding is set or found.
    const Encoder* encoder = nullptr; ///< Null for the default one. Borrowed.
    CRLFEncoding lineEnd = CRLFEncoding::Default;

    Access access = Access::ReadOnly;
    bool isWriting = false;
    const char* markName = nullptr; ///< The encoding that the byte-order mark stands for.
    Codec codec;
    TextReader reader{stream};
    TextWriter writer{stream};
};

} // namespace KrCore
