#pragma once

#include <krcore/text/String.h>

#include <cstdint>

namespace KrCore {

/// FNV-1a over 16-bit units. All of them count, because scripts like names such as "property9999".
class NameHash {
public:
    constexpr void add(unsigned short unit) { value_ = (value_ ^ unit) * 16777619U; }
    constexpr std::uint32_t value() const { return value_; }

    static std::uint32_t of(const String& name) {
        NameHash hash;
        for (unsigned short unit : name)
            hash.add(unit);
        return hash.value();
    }

private:
    std::uint32_t value_ = 2166136261U;
};

} // namespace KrCore
