#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>
#include <krcore/text/String.h>

#include <atomic>

namespace KrCore {

class Cloneable;
class Variant;

/// One record of an `Error`: what went wrong, and where if the reporter knew. Made by
/// `Error::push` alone; borrowed, it lasts until its `Error` changes.
class KR_API ErrorInfo : public Heap {
public:
    ErrorInfo(const ErrorInfo&) = delete;
    ErrorInfo& operator=(const ErrorInfo&) = delete;

    int getCode() const { return code_; }
    const String& getText() const { return text_; }
    const String& getFile() const { return file_; }
    /// The source line or fragment that the position refers to.
    const String& getSource() const { return source_; }
    /// Line, offset and column are -1 when unknown.
    int getLine() const { return line_; }
    int getOffset() const { return offset_; }
    int getColumn() const { return column_; }
    /// Length of the offending text, 0 when unknown.
    unsigned short getLength() const { return length_; }
    /// The older record below this one, or null.
    const ErrorInfo* getNext() const { return next_; }
    /// What the reporter attached, or null. Owned by the record.
    const Cloneable* getData() const { return data_; }
    /// The value that the error is about; an undefined one when there is none. Never null, owned by
    /// the record and made on the first call, which may therefore run out of memory.
    /// Copies of one error have it in common; threads that share them copy the value before they
    /// convert it.
    const Variant* getErrorData() const;

private:
    friend class Error;
    friend class ErrorHead;

    ErrorInfo(int code, const String& text);
    ~ErrorInfo();

    void setData(const Cloneable& data);
    void setErrorData(const Variant& value);

    ErrorInfo* next_ = nullptr;
    String text_;
    String file_;
    String source_;
    /// Copies of an error share it across threads.
    mutable std::atomic<Variant*> errorData_ = nullptr;
    Cloneable* data_ = nullptr;
    int line_ = -1;
    int offset_ = -1;
    int column_ = -1;
    unsigned short length_ = 0;
    const int code_;
};

} // namespace KrCore
