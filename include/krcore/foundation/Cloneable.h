#pragma once

#include <krcore/foundation/Root.h>

namespace KrCore {

/// An object that can make a copy of itself.
class KR_API Cloneable : public Root {
public:
    Cloneable() noexcept = default;
    ~Cloneable() override;

    /// Stores a new copy, owned by the caller, in `*result` and returns 0; otherwise an error code.
    /// `deep` copies what the object refers to as well.
    virtual int clone(Cloneable** result, bool deep) const = 0;
};

} // namespace KrCore
