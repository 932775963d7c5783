#include "foundation/Context.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LiveArray.h>

namespace KrCore {

namespace {

constexpr unsigned longestPrinted = 1000;
constexpr int maxPrintedElements = 4194304;
constexpr int maxPrintedDepth = 512;
constexpr const char* cutOffText = "[too many elements]";

} // namespace

/// A live array whose text is being made, in the chain of those that the calling thread makes one
/// within the other. The way from one to the next may lead through values and host objects.
struct PrintedArray {
    PrintedArray(Context& printing, const LiveArray& printed)
        : context(printing), array(printed), outer(printing.printedArray),
          depth(outer ? outer->depth + 1 : 1), budget(outer ? outer->budget : &ownBudget) {
        context.printedArray = this;
    }
    ~PrintedArray() { context.printedArray = outer; }
    PrintedArray(const PrintedArray&) = delete;
    PrintedArray& operator=(const PrintedArray&) = delete;

    bool isWithinItself() const {
        for (const PrintedArray* around = outer; around; around = around->outer) {
            if (&around->array == &array) return true;
        }
        return false;
    }
    bool takeOne() const { return *budget > 0 && (*budget)-- > 0; }

    Context& context;
    const LiveArray& array;
    PrintedArray* const outer;
    const int depth;
    int ownBudget = maxPrintedElements;
    int* const budget; ///< Elements that the whole text may still hold.
};

/// Lets the method "toString" answer, if there is one.
bool LiveArray::askOwnMethod(String& result) const {
    int id = 0;
    InfoType kind = InfoType::Unknown;
    Variant answer;
    if (getIDForName("toString", id, kind, RequestFlag::Library) != ErrorCode::Ok ||
        kind != InfoType::Method ||
        const_cast<LiveArray*>(this)->call(id, Array(), answer, nullptr) != ErrorCode::Ok)
        return false;
    result = answer.getString();
    return true;
}

int LiveArray::toString(String& result) const {
    Context* context = currentContext();
    if (!context) return ErrorCode::OutOfMemory;
    const PrintedArray printing(*context, *this);
    if (printing.isWithinItself()) {
        result.print("[object %ls]", getClassName().wstr());
        return ErrorCode::Ok;
    }
    if (printing.depth > maxPrintedDepth) {
        result = cutOffText;
        return ErrorCode::Ok;
    }
    if (askOwnMethod(result)) return ErrorCode::Ok;
    if (isUsable()) {
        printElements(printing, result);
    } else {
        result = "[Invalid Object]";
    }
    return ErrorCode::Ok;
}

void LiveArray::printElements(const PrintedArray& printing, String& result) const {
    unsigned length = 0;
    if (getLength(length) != ErrorCode::Ok) {
        result = "[error]";
        return;
    }
    if (length > longestPrinted) {
        result = cutOffText;
        return;
    }
    String text;
    for (unsigned index = 0; index < length; ++index) {
        if (index > 0) text.append(',');
        Variant element;
        if (!printing.takeOne()) {
            text.append(cutOffText);
            break;
        }
        if (getByIndex(index, element, nullptr) != ErrorCode::Ok) {
            text.append("[error]");
            break;
        }
        appendElement(text, element);
    }
    result = text;
}

void LiveArray::appendElement(String& text, const Variant& element) const {
    if (element.getLiveObject() == this) {
        text.append("[object " + getClassName() + "]");
    } else if (element.isDefined()) {
        text.append(element.getString());
    }
}

} // namespace KrCore
