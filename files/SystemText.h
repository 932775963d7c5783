#pragma once

#include "platform/FileSystem.h"

#include <krcore/text/String.h>

namespace KrCore {

/// Puts what the system says into a string.
class SystemText final : public Platform::TextSink {
public:
    explicit SystemText(String& text) : text_(text) {}
    void take(std::span<const unsigned short> units) override {
        text_.append(units.data(), static_cast<int>(units.size()));
    }

private:
    String& text_;
};

/// A path on its way to the system. The string must live on meanwhile.
inline Platform::PathUnits unitsOf(const String& path) {
    return {path.wstr(), static_cast<std::size_t>(path.length())};
}

/// The error code for what the system said.
int codeOf(Platform::FileFault fault);

} // namespace KrCore
