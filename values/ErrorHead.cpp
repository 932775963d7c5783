#include "values/ErrorHead.h"

#include "foundation/AtomicCount.h"

#include <krcore/foundation/Cloneable.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/values/Variant.h>

#include <atomic>
#include <utility>

namespace KrCore {

constinit ErrorHead ErrorHead::permanent[PermanentCount];

void ErrorHead::RecordDeleter::operator()(ErrorInfo* record) const { delete record; }

void ErrorHead::makePermanentRecords() {
    const auto makeFor = [](Permanent which, int code, const char* text) {
        permanent[which].first = makeRecord(code, text, nullptr, nullptr).release();
    };
    makeFor(OutOfMemory, ErrorCode::OutOfMemory, "Out of memory");
    makeFor(UncaughtException, ErrorCode::UncaughtException, "Uncaught Exception");
}

void ErrorHead::dropPermanentRecords() noexcept {
    for (ErrorHead& head : permanent)
        destroyChain(std::exchange(head.first, nullptr));
}

ErrorHead::Record ErrorHead::makeRecord(int code, const String& text, const Cloneable* data,
                                        const Variant* value) {
    Record record(new ErrorInfo(code, text));
    if (data) record->setData(*data);
    if (value) record->setErrorData(*value);
    return record;
}

ErrorHead::Record ErrorHead::copyRecord(const ErrorInfo& source) {
    Record copy = makeRecord(source.code_, source.text_, source.data_, source.errorData_.load());
    copy->file_ = source.file_;
    copy->source_ = source.source_;
    copy->line_ = source.line_;
    copy->offset_ = source.offset_;
    copy->column_ = source.column_;
    copy->length_ = source.length_;
    return copy;
}

ErrorInfo* ErrorHead::copyChain(const ErrorInfo* source) {
    ErrorInfo* first = nullptr;
    ErrorInfo** end = &first;
    try {
        for (; source; source = source->next_) {
            *end = copyRecord(*source).release();
            end = &(*end)->next_;
        }
    } catch (...) {
        destroyChain(first);
        throw;
    }
    return first;
}

// In a loop: an error may have very many records.
void ErrorHead::destroyChain(ErrorInfo* record) noexcept {
    while (record)
        delete std::exchange(record, record->next_);
}

ErrorInfo& ErrorHead::last(ErrorInfo& record) {
    ErrorInfo* last = &record;
    while (last->next_)
        last = last->next_;
    return *last;
}

bool ErrorHead::isShared() const {
    return std::atomic_ref(const_cast<int&>(references_)).load(std::memory_order_acquire) > 1;
}

ErrorHead* ErrorHead::share() noexcept {
    if (!isPermanent()) countUp(references_);
    return this;
}

void ErrorHead::release() noexcept {
    if (isPermanent() || countDown(references_) > 0) return;
    destroyChain(first);
    delete this;
}

void ErrorHead::link(ErrorInfo* records) noexcept {
    last(*records).next_ = first;
    first = records;
}

} // namespace KrCore
