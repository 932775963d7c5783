#pragma once

#include <krcore/foundation/Root.h>

namespace KrCore {

/// An object shared by counting its references. The creator holds the first one; the `release` that
/// takes the last one nulls all weak references and deletes the object. The count is atomic in
/// multi-threaded mode. A destructor may take and drop references to its own object.
class KR_API Refcountable : public Root {
public:
    Refcountable() noexcept = default;
    ~Refcountable() override;

    void addRef() const;
    virtual void release() const;

    /// Negative while the object is being destroyed.
    int getRefCount() const;

private:
    friend class WeakRefBase;
    friend struct WeakReferenceTable;

    mutable int references_ = 1;
};

} // namespace KrCore
