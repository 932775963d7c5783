#pragma once

#include <krcore/foundation/Heap.h>
#include <krcore/values/ErrorInfo.h>

#include <memory>

namespace KrCore {

class Cloneable;
class Variant;

/// What the copies of an error share: its records.
///
/// Three heads stand for good and are not counted: the one of every empty error, and those of the
/// two conditions that have to be reported when there may be no memory left.
class ErrorHead : public Heap {
public:
    struct RecordDeleter {
        void operator()(ErrorInfo* record) const;
    };
    using Record = std::unique_ptr<ErrorInfo, RecordDeleter>;

    enum Permanent { Empty, OutOfMemory, UncaughtException, PermanentCount };
    static ErrorHead permanent[PermanentCount];

    constexpr ErrorHead() = default;

    static void makePermanentRecords();
    static void dropPermanentRecords() noexcept;

    static Record makeRecord(int code, const String& text, const Cloneable* data,
                             const Variant* value);
    static Record copyRecord(const ErrorInfo& source);
    /// Copies of all records from `source` on, linked in the same order; null for null.
    static ErrorInfo* copyChain(const ErrorInfo* source);
    static void destroyChain(ErrorInfo* record) noexcept;
    static ErrorInfo& last(ErrorInfo& record);

    bool isEmpty() const { return first == nullptr; }
    bool isPermanent() const { return this >= permanent && this < permanent + PermanentCount; }
    /// Whether the collecting of records has ended with this one.
    bool isFinal() const { return isPermanent() && this != &permanent[Empty]; }
    bool isShared() const;

    ErrorHead* share() noexcept;
    void release() noexcept;
    /// Puts records in front of those that are here.
    void link(ErrorInfo* records) noexcept;

    ErrorInfo* first = nullptr; ///< Owned, with all that hang on it.

private:
    int references_ = 1;
};

} // namespace KrCore
