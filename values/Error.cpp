#include <krcore/values/Error.h>

#include "foundation/ModuleHooks.h"
#include "values/ErrorDefinitions.h"
#include "values/ErrorHead.h"
#include "values/ErrorTable.h"

#include <krcore/live/LiveObject.h>
#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

namespace KrCore {

void startErrors() { ErrorHead::makePermanentRecords(); }

void stopErrors() {
    dropErrorDefinitions();
    ErrorHead::dropPermanentRecords();
}

namespace {

/// The head that a plain push of `code` installs in an empty error, or null.
ErrorHead* permanentHead(int code) {
    switch (absoluteCode(code)) {
    case absoluteCode(ErrorCode::OutOfMemory):
        return &ErrorHead::permanent[ErrorHead::OutOfMemory];
    case absoluteCode(ErrorCode::UncaughtException):
        return &ErrorHead::permanent[ErrorHead::UncaughtException];
    default:
        return nullptr;
    }
}

String messageOf(int code) {
    String message;
    KrGetErrorMsg(code, message);
    return message;
}

String untranslatedMessageOf(int code) {
    String message;
    String className;
    Error::getErrorDefinition(code, message, className);
    return message;
}

/// The argument itself is not searched for another "%1".
String filledIn(String message, const String& argument) {
    message.replaceAll("%1", argument, 0);
    return message;
}

} // namespace

Error::Error() noexcept : head_(&ErrorHead::permanent[ErrorHead::Empty]) {}

Error::Error(int code, const String& text, bool localize) : Error() {
    push(code, text, nullptr, localize);
}

Error::Error(const Error& other) noexcept : Heap(), head_(other.head_->share()) {}

Error& Error::operator=(const Error& other) noexcept {
    if (this == &other) return *this;
    ErrorHead* shared = other.head_->share();
    head_->release();
    head_ = shared;
    return *this;
}

Error::~Error() { head_->release(); }

void Error::erase() noexcept {
    head_->release();
    head_ = &ErrorHead::permanent[ErrorHead::Empty];
}

/// Makes the head this error's own, with the records it has.
void Error::unique() {
    if (!head_->isPermanent() && !head_->isShared()) return;
    auto own = std::make_unique<ErrorHead>();
    own->first = ErrorHead::copyChain(head_->first);
    head_->release();
    head_ = own.release();
}

/// Takes over records, which come in front of those that are here.
void Error::adopt(ErrorInfo* records) {
    if (head_->isFinal()) { // Only now, by the object that was asked.
        ErrorHead::destroyChain(records);
        return;
    }
    try {
        unique();
    } catch (...) {
        ErrorHead::destroyChain(records);
        throw;
    }
    head_->link(records);
}

// What a record says is put together before this error changes: it may come from the error itself,
// and a script object may report into it while it is asked.

void Error::push(int code, const String& text, const Cloneable* data, bool localize) {
    if (head_->isFinal()) return;
    const String message = localize ? filledIn(messageOf(code), text) : text;
    adopt(ErrorHead::makeRecord(code, message, data, nullptr).release());
}

void Error::push(int code, const Variant& value, const Cloneable* data) {
    if (head_->isFinal()) return;
    const Variant kept(value);
    const String message = filledIn(messageOf(code), kept.getString());
    adopt(ErrorHead::makeRecord(code, message, data, &kept).release());
}

void Error::push(int code, const LiveObject& object, int id, bool localize, const Cloneable* data) {
    if (head_->isFinal()) return;
    String message;
    if (localize) {
        object.getErrorText(message, code, id, false);
    } else {
        String name;
        object.getPropertyText(name, id, false);
        message = filledIn(untranslatedMessageOf(code), name);
    }
    adopt(ErrorHead::makeRecord(code, message, data, nullptr).release());
}

void Error::push(int code, const Cloneable* data) {
    if (head_->isFinal()) return;
    ErrorHead* permanent = permanentHead(code);
    if (permanent && permanent->first && head_->isEmpty() && !data) {
        head_->release();
        head_ = permanent;
        return;
    }
    adopt(ErrorHead::makeRecord(code, messageOf(code), data, nullptr).release());
}

void Error::push(const ErrorInfo& record) {
    if (head_->isFinal()) return;
    adopt(ErrorHead::copyRecord(record).release());
}

void Error::push(const Error& other) {
    if (head_->isFinal() || other.head_->isEmpty()) return;
    if (head_->isEmpty()) {
        *this = other;
        return;
    }
    adopt(ErrorHead::copyChain(other.head_->first));
}

void Error::setMoreInfo(const String& source, int line, int offset, int column,
                        unsigned short length) {
    if (head_->isEmpty() || head_->isFinal()) return;
    const String kept(source); // It may be that of a record which `unique` gives up.
    unique();
    ErrorInfo& newest = *head_->first;
    newest.source_ = kept;
    newest.line_ = line;
    newest.offset_ = offset;
    newest.column_ = column;
    newest.length_ = length;
}

int Error::getCode() const { return head_->first ? head_->first->getCode() : ErrorCode::Ok; }

const ErrorInfo* Error::getError() const { return head_->first; }

const Variant* Error::getErrorData() const {
    return head_->first ? head_->first->getErrorData() : nullptr;
}

void Error::getFullText(String& text) const {
    String joined;
    for (const ErrorInfo* record = head_->first; record; record = record->getNext()) {
        if (record != head_->first) joined.append("\n- ");
        joined.append(record->getText());
    }
    text = joined;
}

} // namespace KrCore
