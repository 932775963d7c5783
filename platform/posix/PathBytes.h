#pragma once

#include "platform/FileSystem.h"

#include <climits>

namespace KrCore::Platform {

/// A path of the library as the bytes that the system wants.
///
/// Drive `C:` is the folder "/c". A folder "/C" would get the same URI as that one, so it can only
/// be named with its letter escaped.
class PathBytes {
public:
    explicit PathBytes(PathUnits path);

    /// 0-terminated; null when the path names nothing here.
    const char* get() const { return isValid_ ? bytes_ : nullptr; }

private:
    bool takeRoot(PathUnits& path);
    bool takeNames(PathUnits path);
    bool put(char byte);
    bool putCodePoint(unsigned int codePoint);

    char bytes_[PATH_MAX];
    int length_ = 0;
    bool isValid_;
};

/// An absolute path of the system in the library's form.
void takePath(const char* path, TextSink& sink);

/// One name in a folder.
void takeName(const char* name, bool isInRoot, TextSink& sink);

/// A path that may be relative.
void takeAnyPath(const char* path, TextSink& sink);

} // namespace KrCore::Platform
