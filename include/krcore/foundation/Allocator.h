#pragma once

#include <krcore/foundation/Root.h>

namespace KrCore {

/// Where the heap gets its memory. A host derives its own and selects it with `set`; up to ten can
/// be installed beside the built-in one, which uses `malloc`. Installed allocators are never
/// removed: one that was ever installed must outlive every block it produced and the last
/// `InitTerm::exit`, which flushes it. A static object does; one from its own class-level `new`
/// cannot be deleted any more by then.
///
/// In multi-threaded mode any thread may call in at any time.
class KR_API Allocator : public Root {
public:
    Allocator() noexcept = default;
    ~Allocator() override;

    /// A block of `byteCount` bytes at an address divisible by 16, or null.
    virtual void* allocMem(std::size_t byteCount, const char* file, int line);
    virtual void* allocBlock(std::size_t byteCount) = 0;
    virtual void freeBlock(void* block) = 0;
    /// Resizes as `realloc` does; a null `block` asks for a new one. Null leaves the block as it
    /// was.
    virtual void* reallocBlock(void* block, std::size_t byteCount) = 0;
    /// Called when memory is short, once before the second and last attempt, and at shut-down: give
    /// back what is held in reserve. Must not use the library.
    virtual void flush();

    /// A mark for the host; the library does not read it.
    bool isRethrow() const { return rethrow_; }
    void setRethrow(bool rethrow) { rethrow_ = rethrow; }

    /// The current allocator; borrowed.
    static Allocator* get();
    /// Makes `allocator` the current one (null: the built-in one). False when ten others are
    /// installed. The allocator that `get` returned can always be selected again.
    static bool set(Allocator* allocator);

private:
    bool rethrow_ = false;
};

} // namespace KrCore
